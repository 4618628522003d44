#include "frontend/expansion/model_data.h"

#include "frontend/base/bytes.h"
#include "frontend/base/decimals.h"
#include "frontend/base/spelling.h"
#include "frontend/expansion/data_files.h"
#include "frontend/findings/failure.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>
#include <span>
#include <string_view>
#include <utility>

namespace orvex::frontend {

namespace {

using std::string_view;
using Kind = DataRow::Kind;

// Scalars of the header file, with their values there.
constexpr std::array<std::pair<string_view, double>, 2> header_scalars{
    {{"ORVEPS", 1e-8}, {"ORVREPORT", 1}}};

// Further findings about the data would add nothing new, and searching for similar names takes
// time.
constexpr std::size_t most_findings = 20;

std::optional<double> number_of(string_view text) {
    if (text.starts_with('+')) text.remove_prefix(1);
    return decimal_in(text);
}

std::span<const Index> cells_of(const DataFiles& files, const DataRow& row) {
    return std::span(files.cells).subspan(row.first_cell, row.cell_count);
}

// How the program uses a name; an empty NameUse if it does not.
NameUse use_of(const GeneratorProgram& program, const std::string& name) {
    const Index found = program.names.find(name);
    return found == no_index ? NameUse() : program.uses[found];
}

bool is_wanted(const NameUse& use) { return use.is_set || use.arguments >= 0; }

class Maker {
  public:
    Maker(DataFiles& files, const GeneratorProgram& program, const Variables& variables, Data& data,
          std::vector<Finding>& findings)
        : files_(files),
          program_(program),
          variables_(variables),
          data_(data),
          findings_(findings) {}

    bool make() {
        data_.elements = &files_.names;
        for (const DataRow& row : files_.rows) {
            if (row.kind == Kind::alias) take_alias(row);
        }
        note_aliases();
        for (const DataRow& row : files_.rows) {
            if (row.kind != Kind::alias) take(row);
            if (faults_ > most_findings) break;
        }
        for (const auto& [name, value] : header_scalars) add_scalar(std::string(name), value);
        return faults_ == 0;
    }

  private:
    const std::string& name_of(const DataRow& row) const { return files_.names.text(row.name); }

    void take_alias(const DataRow& row) {
        const std::string& target = files_.names.text(files_.cells[row.first_cell]);
        const auto [alias, is_new] = data_.aliases.emplace(name_of(row), target);
        if (!is_new && alias->second != target) refuse(row, "alias", target);
    }

    // A set is needed under its own name or that of an alias.
    NameUse wanted_use(const std::string& name) const {
        const auto found = alias_uses_.find(name);
        return found == alias_uses_.end() ? use_of(program_, name) : found->second;
    }

    void note_aliases() {
        for (const auto& [alias, first_target] : data_.aliases) {
            const NameUse use = use_of(program_, alias);
            if (!is_wanted(use)) continue;
            files_.used.insert(files_.names.find(alias));
            std::string target = first_target;
            for (std::size_t step = 0; step < data_.aliases.size(); ++step) {
                note_target(target, use);
                const auto next = data_.aliases.find(target);
                if (next == data_.aliases.end()) break;
                target = next->second;
            }
        }
    }

    void note_target(const std::string& target, const NameUse& use) {
        NameUse& own = alias_uses_.try_emplace(target, use_of(program_, target)).first->second;
        own.is_set = true;
        own.arguments = std::max(own.arguments, use.arguments);
    }

    void take(const DataRow& row) {
        const std::string& name = name_of(row);
        const auto variable = variables_.find(name);
        const NameUse use = wanted_use(name);
        const bool may_be_level = row.kind == Kind::level || row.kind == Kind::csv;
        if (may_be_level && variable != variables_.end())
            return take_level(row, static_cast<std::size_t>(variable->second));
        const bool is_used = is_wanted(use) && row.kind != Kind::level;
        if (is_used) {
            files_.used.insert(row.name);
        } else {
            data_.unwanted.insert(name);
        }
        if (row.kind == Kind::set) {
            take_member(row, cells_of(files_, row));
        } else if (is_used) {
            take_wanted(row, use);
        }
    }

    // A variable of another model may have the same name, but other sets.
    void take_level(const DataRow& row, std::size_t width) {
        if (row.cell_count != width && !row.is_empty) {
            files_.misfits.insert(row.name);
            return;
        }
        files_.used.insert(row.name);
        if (!row.is_empty) take_value(row, data_.levels[name_of(row)]);
    }

    // Takes a row for a name that the model uses as a set or a parameter.
    void take_wanted(const DataRow& row, const NameUse& use) {
        if (row.kind == Kind::parameter) return take_value(row, data_.parameters[name_of(row)]);
        const std::size_t columns = row.cell_count + std::size_t{2};
        const auto arguments = static_cast<std::size_t>(std::max(use.arguments, 0));
        const std::size_t width = use.arguments < 0 ? 1 : arguments;
        if (use.arguments >= 0 && !use.is_set && columns == arguments + 2) {
            take_value(row, data_.parameters[name_of(row)]);
        } else if (columns == width + 1) {
            take_csv_member(row);
        } else {
            refuse_width(row, width, use.is_set ? width + 1 : width + 2);
        }
    }

    void take_csv_member(const DataRow& row) {
        const string_view fault = fault_of_name(row.last);
        if (!fault.empty()) return refuse(row, fault, std::string(row.last));
        const std::span<const Index> cells = cells_of(files_, row);
        std::vector<Index> member(cells.begin(), cells.end());
        member.push_back(files_.names.add(row.last));
        take_member(row, member);
    }

    void take_member(const DataRow& row, std::span<const Index> member) {
        const auto [found, is_new] = data_.sets.try_emplace(name_of(row));
        Tuples& members = found->second.members;
        if (row.is_empty) return;
        if (members.size() == 0) members = Tuples(member.size());
        if (members.width() != member.size()) return refuse(row, "widths", name_of(row));
        members.add(member);
    }

    void take_value(const DataRow& row, DataValues& values) {
        if (row.is_empty) return;
        if (!values.has_width) values.places = Tuples(row.cell_count);
        values.has_width = true;
        if (values.places.width() != row.cell_count) return refuse(row, "widths", name_of(row));
        const std::optional<double> value =
            row.kind == Kind::csv ? number_of(row.last) : std::optional(row.value);
        if (!value) return refuse(row, "value", std::string(row.last));
        const Index number = values.places.add(cells_of(files_, row));
        if (number == values.values.size()) values.values.push_back(*value);
        if (values.values[number] != *value) refuse(row, "repeated", name_of(row));
    }

    void add_scalar(const std::string& name, double value) {
        DataValues& values = data_.parameters[name];
        const Index own = files_.names.find(name);
        if (own != no_index) files_.used.insert(own);
        if (values.has_width) return;
        values.has_width = true;
        values.places = Tuples(0);
        values.places.add({});
        values.values.push_back(value);
    }

    // Reports a row with too many or too few columns, once for each name.
    void refuse_width(const DataRow& row, std::size_t width, std::size_t columns) {
        if (!refused_.emplace(row.name).second) {
            ++faults_;
            return;
        }
        const Values values = {
            {"text", name_of(row)},
            {"arguments", std::to_string(width) + (width == 1 ? " argument" : " arguments")},
            {"count", std::to_string(row.cell_count + std::size_t{2})},
            {"columns", std::to_string(columns)}};
        report(row, "columns", values);
    }

    void refuse(const DataRow& row, string_view variant, const std::string& text) {
        report(row, variant, {{"text", text}, {"name", name_of(row)}});
    }

    void report(const DataRow& row, string_view variant, const Values& values) {
        ++faults_;
        if (!files_.refused.emplace(row.text, row.offset).second) return;
        findings_.push_back(data_finding(files_, row.text, row.offset, values, variant));
    }

    DataFiles& files_;
    const GeneratorProgram& program_;
    const Variables& variables_;
    Data& data_;
    std::vector<Finding>& findings_;
    std::map<std::string, NameUse> alias_uses_;  // for the sets that aliases refer to
    std::set<Index> refused_;
    std::size_t faults_ = 0;
};

// The value of a reference, and how many elements it has.
struct Meaning {
    const DataSet* set = nullptr;
    const DataValues* values = nullptr;
};

Meaning meaning_of(const Data& data, const std::string& name) {
    const auto parameter = data.parameters.find(name);
    return {find_set(data, name),
            parameter == data.parameters.end() ? nullptr : &parameter->second};
}

class Checker {
  public:
    Checker(const GeneratorProgram& program, const Data& data, std::vector<Flaw>& flaws)
        : program_(program), data_(data), flaws_(flaws) {}

    void check() {
        for (Index name = 0; name < program_.uses.size(); ++name) {
            if (is_wanted(program_.uses[name])) check_name(name);
        }
    }

  private:
    void check_name(Index name) {
        const NameUse& use = program_.uses[name];
        const Meaning meaning = meaning_of(data_, program_.names.text(name));
        if (use.is_set && meaning.set == nullptr) {
            add_missing(name, "set");
        } else if (meaning.set == nullptr && meaning.values == nullptr) {
            add_missing(name, use.arguments == 0 ? "scalar" : "");
        } else if (meaning.set != nullptr && meaning.values != nullptr) {
            add(name, "data-malformed", "both", {});
        } else {
            check_width(name, meaning);
        }
    }

    void check_width(Index name, const Meaning& meaning) {
        const NameUse& use = program_.uses[name];
        const bool has_members = meaning.set != nullptr && meaning.set->members.size() > 0;
        const bool has_values = meaning.values != nullptr && meaning.values->has_width;
        if (!has_members && !has_values) return;
        const std::size_t width =
            has_members ? meaning.set->members.width() : meaning.values->places.width();
        const int arguments = use.is_looped ? 1 : use.arguments;
        if (arguments >= 0 && width != static_cast<std::size_t>(arguments))
            add(name, "expression-unknown", "elements",
                {{"count", std::to_string(arguments)}, {"other", std::to_string(width)}});
        else if (use.arguments >= 0 && width != static_cast<std::size_t>(use.arguments))
            add(name, "expression-unknown", "elements",
                {{"count", std::to_string(use.arguments)}, {"other", std::to_string(width)}});
    }

    void add_missing(Index name, string_view variant) {
        const std::vector<std::string> unwanted(data_.unwanted.begin(), data_.unwanted.end());
        const std::string near = nearest(program_.names.text(name), unwanted);
        add(name, "data-missing", variant, {{"near", near}});
    }

    void add(Index name, string_view code, string_view variant, Values values) {
        values["name"] = program_.names.text(name);
        values["text"] = program_.names.text(name);
        flaws_.push_back({code, variant, std::move(values), program_.uses[name].place});
    }

    const GeneratorProgram& program_;
    const Data& data_;
    std::vector<Flaw>& flaws_;
};

class ElementFinder {
  public:
    ElementFinder(DataFiles& files, const Data& data)
        : files_(files), is_known_(files.names.size()) {
        for (const auto& [name, set] : data.sets) {
            for (Index member = 0; member < set.members.size(); ++member) {
                for (const Index element : set.members.tuple(member)) is_known_[element] = true;
            }
        }
        note_unused_sets();
        has_sets_ = std::find(is_known_.begin(), is_known_.end(), true) != is_known_.end();
    }

    // Should the element be reported, and has it not been reported yet?
    bool is_unreported(Index element) {
        const bool is_unknown = element == no_index || !is_known_[element];
        if (!has_sets_ || !is_unknown || files_.unknown.size() >= most_findings) return false;
        return element == no_index || files_.unknown.insert(element).second;
    }

    Values values_of(const std::string& element) const {
        std::vector<std::string> known;
        for (Index name = 0; name < is_known_.size(); ++name) {
            if (is_known_[name]) known.push_back(files_.names.text(name));
        }
        return {{"name", element}, {"near", nearest(element, known)}};
    }

  private:
    // A CSV row that no model uses may list an element of a set, so its element counts as known.
    void note_unused_sets() {
        for (const DataRow& row : files_.rows) {
            const bool may_be_member = row.kind == Kind::csv && row.cell_count == 0;
            const Index element = may_be_member && !files_.used.contains(row.name)
                                      ? files_.names.find(row.last)
                                      : no_index;
            if (element != no_index) is_known_[element] = true;
        }
    }

    DataFiles& files_;
    std::vector<bool> is_known_;  // for each name: it is an element of a set
    bool has_sets_ = false;
};

}  // namespace

bool make_data(DataFiles& files, const GeneratorProgram& program, const Variables& variables,
               Data& data, std::vector<Finding>& findings) {
    return Maker(files, program, variables, data, findings).make();
}

void check_data(const GeneratorProgram& program, const Data& data, std::vector<Flaw>& flaws) {
    Checker(program, data, flaws).check();
}

void find_unknown_elements(DataFiles& files, const GeneratorProgram& program, const Data& data,
                           std::vector<Finding>& findings, std::vector<Flaw>& flaws) {
    ElementFinder finder(files, data);
    for (const DataRow& row : files.rows) {
        const std::string& name = files.names.text(row.name);
        if (!data.parameters.contains(name) && !data.levels.contains(name)) continue;
        for (const Index element : cells_of(files, row)) {
            if (!finder.is_unreported(element)) continue;
            const Values values = finder.values_of(files.names.text(element));
            findings.push_back(
                warning("element-unknown", values, data_line(files.texts[row.text], row.offset)));
            advise_near(findings.back(), values);
        }
    }
    std::set<Index> seen;
    for (const UsedElement& used : program.elements) {
        const std::string& name = program.names.text(used.name);
        if (!seen.insert(used.name).second || !finder.is_unreported(files.names.find(name)))
            continue;
        const Values values = finder.values_of(name);
        flaws.push_back({"element-unknown", {}, values, used.place});
    }
}

void add_unused_names(const DataFiles& files, std::vector<Finding>& findings) {
    std::set<Index> unused;
    for (const DataRow& row : files.rows) {
        if (files.used.contains(row.name) || !unused.insert(row.name).second) continue;
        const bool is_misfit = files.misfits.contains(row.name);
        findings.push_back(warning("data-name-unused", {{"name", files.names.text(row.name)}},
                                   data_line(files.texts[row.text], row.offset),
                                   is_misfit ? "elements" : ""));
    }
}

}  // namespace orvex::frontend
