#include "frontend/accounts/comparison.h"

#include "frontend/accounts/gaps.h"
#include "frontend/accounts/printed.h"
#include "frontend/base/csv.h"
#include "frontend/base/decimals.h"
#include "frontend/base/spelling.h"
#include "frontend/expansion/data_files.h"
#include "frontend/findings/failure.h"
#include "frontend/findings/wording.h"

#include <deque>
#include <set>
#include <string_view>

namespace orvex::frontend {

namespace {

using CellPlace = std::pair<std::string, std::string>;

class TableReader {
  public:
    TableReader(AccountTable& table, std::vector<Finding>& findings)
        : table_(table), findings_(findings), reader_(table.file.bytes, unquoted_) {}

    bool read() {
        CsvRow row;
        for (bool is_head = true; reader_.read(row); is_head = false) {
            if (!(is_head ? read_head(row) : read_row(row))) return false;
        }
        if (!reader_.fault().empty()) return refuse(reader_.fault_offset(), reader_.fault(), {});
        return columns_.empty() ? refuse(0, "empty", {}) : true;
    }

  private:
    bool refuse(std::size_t offset, std::string_view variant, std::string_view text) {
        findings_.push_back(failure("table-malformed", {{"text", std::string(text)}},
                                    data_line(table_.file, offset), variant));
        return false;
    }

    bool read_head(const CsvRow& row) {
        for (std::size_t i = 1; i < row.cells.size(); ++i) {
            columns_.push_back(printed_name(row.cells[i]));
            if (columns_.back().empty()) continue;
            if (!table_.names.emplace(columns_.back(), row.offset).second)
                return refuse(row.offset, "", row.cells[i]);
        }
        return true;
    }

    bool read_row(const CsvRow& row) {
        const std::string name = printed_name(row.cells.front());
        if (!name.empty() && !rows_.insert(name).second)
            return refuse(row.offset, "", row.cells.front());
        if (!name.empty()) table_.names[name] = row.offset;
        for (std::size_t i = 1; i < row.cells.size(); ++i) {
            if (row.cells[i].empty()) continue;
            const bool has_names =
                !name.empty() && i <= columns_.size() && !columns_[i - 1].empty();
            if (!has_names) return refuse(row.offset, "nameless", row.cells[i]);
            const auto value = printed_number(row.cells[i]);
            if (!value) return refuse(row.offset, "value", row.cells[i]);
            table_.cells[{name, columns_[i - 1]}] = {*value, row.offset};
        }
        return true;
    }

    AccountTable& table_;
    std::vector<Finding>& findings_;
    std::deque<std::string> unquoted_;
    CsvReader reader_;
    std::vector<std::string> columns_;
    std::set<std::string> rows_;
};

// Compares two tables, cell by cell.
class Comparison {
  public:
    Comparison(const AccountTable& table, const Books& books, const Matrix& matrix)
        : table_(table) {
        for (const Account& account : books.accounts) own_names_.insert(account.name);
        for (const auto& [place, value] : matrix) {
            cells_[{books.accounts[place.first].name, books.accounts[place.second].name}].first +=
                value;
        }
        for (const auto& [place, cell] : table.cells) cells_[place].second = cell.value;
    }

    std::vector<Finding> findings(double tolerance) {
        for (const auto& [name, offset] : table_.names) {
            if (own_names_.contains(name)) continue;
            add_missing(name, offset, "model");
            const std::string near = nearest(name, {own_names_.begin(), own_names_.end()});
            if (!near.empty())
                set_help(findings_.back(), "did you mean " + back_quoted(near) + "?");
        }
        for (const std::string& name : own_names_) {
            if (!table_.names.contains(name)) add_missing(name, 0, "");
        }
        for (const auto& [place, values] : cells_) {
            const bool is_shared = has_both(place.first) && has_both(place.second);
            if (is_shared && !agree(values.first, values.second, tolerance))
                add_cell(place, values.first, values.second);
        }
        return std::move(findings_);
    }

  private:
    bool has_both(const std::string& name) const {
        return own_names_.contains(name) && table_.names.contains(name);
    }

    void add_missing(const std::string& name, std::size_t offset, std::string_view variant) {
        findings_.push_back(failure("table-account-missing", {{"name", name}},
                                    data_line(table_.file, offset), variant));
    }

    void add_cell(const CellPlace& place, double own, double given) {
        constexpr int digits = 10;
        const auto cell = table_.cells.find(place);
        const std::size_t offset =
            cell == table_.cells.end() ? table_.names.at(place.first) : cell->second.offset;
        findings_.push_back(failure("table-cell-differs",
                                    {{"row", place.first},
                                     {"column", place.second},
                                     {"own", rounded_decimal(own, digits)},
                                     {"given", rounded_decimal(given, digits)}},
                                    data_line(table_.file, offset)));
    }

    const AccountTable& table_;
    std::set<std::string> own_names_;
    std::map<CellPlace, std::pair<double, double>> cells_;  // in the model, in the table
    std::vector<Finding> findings_;
};

}  // namespace

bool read_table(AccountTable& table, std::vector<Finding>& findings) {
    return TableReader(table, findings).read();
}

std::vector<Finding> compare(const AccountTable& table, const Books& books, const Matrix& matrix,
                             double tolerance) {
    return Comparison(table, books, matrix).findings(tolerance);
}

}  // namespace orvex::frontend
