#include "frontend/views/statement.h"

#include "frontend/base/bytes.h"
#include "frontend/base/csv.h"
#include "frontend/base/decimals.h"
#include "frontend/base/printable.h"
#include "frontend/base/style.h"
#include "frontend/views/json.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <nlohmann/json.hpp>
#include <vector>

namespace orvex::frontend {

namespace {

using nlohmann::ordered_json;

constexpr int data_version = 2;
constexpr int shown_digits = 10;

// An amount of an account and its name.
struct Amount {
    std::string_view name;
    double value;
};

struct KindText {
    std::string_view name;
    std::string_view title;
};

constexpr std::array<KindText, account_kind_count> kinds = {
    KindText{"sector", "Sectors"},
    KindText{"commodity", "Commodities"},
    KindText{"consumer", "Consumers"},
};

const KindText& text_of(AccountKind kind) { return kinds[static_cast<std::size_t>(kind)]; }

std::vector<Amount> amounts_of(const Account& account) {
    switch (account.kind) {
    case AccountKind::sector:
        return {
            {"revenue", account.received}, {"cost", cost_of(account)}, {"taxes", account.taxes}};
    case AccountKind::commodity: return {{"supply", account.paid}, {"demand", account.received}};
    case AccountKind::consumer: break;
    }
    return {{"income", account.received}, {"spending", account.paid}};
}

// All names of amounts, in the order of the kinds.
std::vector<std::string_view> all_amounts() {
    std::vector<std::string_view> names;
    for (const AccountKind kind :
         {AccountKind::sector, AccountKind::commodity, AccountKind::consumer}) {
        Account account;
        account.kind = kind;
        for (const Amount& amount : amounts_of(account)) names.push_back(amount.name);
    }
    return names;
}

bool holds(const std::vector<AccountIndex>& list, AccountIndex account) {
    return std::binary_search(list.begin(), list.end(), account);
}

// The heading or the cells of a line of the table.
struct Line {
    std::string name;
    std::vector<std::string> cells;
};

struct Section {
    Line head;
    std::vector<Line> lines;
};

std::string capitalised(std::string_view word) {
    std::string text(word);
    text.front() = upper(text.front());
    return text;
}

Line head_of(AccountKind kind) {
    Account account;
    account.kind = kind;
    Line head{std::string(text_of(kind).title), {}};
    for (const Amount& amount : amounts_of(account)) head.cells.push_back(capitalised(amount.name));
    if (head.cells.size() < 3) head.cells.emplace_back();
    head.cells.emplace_back("Gap");
    return head;
}

std::string gap_text(const AccountStatement& statement, AccountIndex index) {
    if (is_unknown(statement.books.accounts[index], statement.gaps)) return "?";
    if (!holds(statement.gaps.accounts, index)) return "";
    return rounded_decimal(gap_of(statement.books.accounts[index]), shown_digits);
}

Line line_of(const AccountStatement& statement, AccountIndex index) {
    const Account& account = statement.books.accounts[index];
    Line line{"  " + printable(account.name), {}};
    for (const Amount& amount : amounts_of(account))
        line.cells.push_back(rounded_decimal(amount.value, shown_digits));
    if (line.cells.size() < 3) line.cells.emplace_back();
    line.cells.push_back(gap_text(statement, index));
    return line;
}

std::vector<Section> sections_of(const AccountStatement& statement) {
    std::vector<Section> sections;
    for (const AccountIndex index : by_kind(statement.books)) {
        const AccountKind kind = statement.books.accounts[index].kind;
        Line head = head_of(kind);
        if (sections.empty() || sections.back().head.name != head.name)
            sections.push_back({std::move(head), {}});
        sections.back().lines.push_back(line_of(statement, index));
    }
    return sections;
}

std::size_t widest(const std::vector<Section>& sections, const auto& width) {
    std::size_t most = 0;
    for (const Section& section : sections) {
        most = std::max(most, width(section.head));
        for (const Line& line : section.lines) most = std::max(most, width(line));
    }
    return most;
}

void put_line(const Line& line, std::size_t name_width, std::size_t cell_width, bool colour,
              std::string& out) {
    std::string text;
    text.append(name_width - width_of(line.name), ' ');
    for (const std::string& cell : line.cells)
        text.append(2 + cell_width - cell.size(), ' ').append(cell);
    out += styled(Style::bold, line.name, colour);
    out.append(without_trailing_blanks(text)) += '\n';
}

ordered_json account_json(const AccountStatement& statement, AccountIndex index) {
    const Account& account = statement.books.accounts[index];
    ordered_json object = {{"kind", text_of(account.kind).name}, {"name", as_utf8(account.name)}};
    if (account.kind != AccountKind::consumer) object["level"] = account.level;
    for (const Amount& amount : amounts_of(account))
        object[std::string(amount.name)] = amount.value;
    const bool known = !is_unknown(account, statement.gaps);
    object["gap"] = known ? ordered_json(gap_of(account)) : ordered_json();
    object["balanced"] =
        known ? ordered_json(!holds(statement.gaps.accounts, index)) : ordered_json();
    return object;
}

}  // namespace

std::string statement_text(const AccountStatement& statement, bool colour) {
    const std::vector<Section> sections = sections_of(statement);
    const std::size_t name_width =
        widest(sections, [](const Line& line) { return width_of(line.name); });
    const std::size_t cell_width = widest(sections, [](const Line& line) {
        std::size_t most = 0;
        for (const std::string& cell : line.cells) most = std::max(most, cell.size());
        return most;
    });
    std::string out = styled(Style::bold, printable(statement.model), colour) + "  " +
                      printable(statement.path) + ":" + std::to_string(statement.line) + "\n";
    for (const Section& section : sections) {
        out += '\n';
        put_line(section.head, name_width, cell_width, colour, out);
        for (const Line& line : section.lines) put_line(line, name_width, cell_width, false, out);
    }
    return out;
}

std::string statement_csv_head() {
    std::string text = "model,kind,name,level";
    for (const std::string_view name : all_amounts()) text.append(",").append(name);
    return text + ",gap\n";
}

std::string statement_csv(const AccountStatement& statement) {
    const std::vector<std::string_view> columns = all_amounts();
    std::string text;
    for (const AccountIndex index : by_kind(statement.books)) {
        const Account& account = statement.books.accounts[index];
        text.append(csv_cell(statement.model)).append(",").append(text_of(account.kind).name);
        text.append(",").append(csv_cell(account.name)) += ',';
        if (account.kind != AccountKind::consumer) text += shortest_decimal(account.level);
        const std::vector<Amount> amounts = amounts_of(account);
        for (const std::string_view column : columns) {
            text += ',';
            const auto amount =
                std::find_if(amounts.begin(), amounts.end(),
                             [&](const Amount& other) { return other.name == column; });
            if (amount != amounts.end()) text += shortest_decimal(amount->value);
        }
        text += ',';
        if (!is_unknown(account, statement.gaps)) text += shortest_decimal(gap_of(account));
        text += '\n';
    }
    return text;
}

std::string statement_json(const AccountStatement& statement) {
    ordered_json accounts = ordered_json::array();
    for (const AccountIndex index : by_kind(statement.books))
        accounts.push_back(account_json(statement, index));
    const ordered_json object = {{"version", data_version},
                                 {"type", "balance"},
                                 {"model", as_utf8(statement.model)},
                                 {"path", as_utf8(statement.path)},
                                 {"line", statement.line},
                                 {"accounts", std::move(accounts)}};
    return object.dump(-1, ' ', false, ordered_json::error_handler_t::replace) + "\n";
}

}  // namespace orvex::frontend
