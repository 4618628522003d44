#include "frontend/model/economy.h"

#include "frontend/base/bytes.h"
#include "frontend/translator/generator.h"

#include <algorithm>
#include <unordered_map>
#include <utility>

namespace orvex::frontend {

namespace {

using View = std::string_view;

// The lines of one model, in the translator's count and in the file's.
struct ModelLines {
    const Source& source;
    const ModelText& model;
    int before = 0;  // lines that the run had counted before this model

    // 0 for a number that is none of the model's.
    int in_file(int number) const {
        const int line = model.line + number - before;
        return number > before && line <= model.last ? line : 0;
    }
    const SourceLine& at(int line) const { return line_at(source, line); }
};

// A value that is a name and no more, or a name with arguments.
struct ValueName {
    View name;
    std::vector<std::string> arguments;
    bool known = false;  // the arguments are those of the name alone
};

ValueName name_in_value(View value) {
    ValueName result;
    const auto open = value.find('(');
    result.name = without_trailing_blanks(value.substr(0, open));
    if (open == View::npos || open == 0) {
        result.known = true;
        return result;
    }
    const auto close = value.find(')', open);
    if (close == View::npos || value.find(',', close) != View::npos) return result;
    View list = value.substr(open + 1, close - open - 1);
    if (list.find('(') != View::npos) return result;
    for (bool more = true; more;) {
        const auto comma = list.find(',');
        more = comma != View::npos;
        result.arguments.emplace_back(without_blanks_around(list.substr(0, comma)));
        list.remove_prefix(more ? comma + 1 : list.size());
    }
    result.known = true;
    return result;
}

// Is this line the record of an entry with that label and name in its first field?
bool begins_entry(const SourceLine& line, const Statement& head) {
    if (line.kind != LineKind::entry) return false;
    const std::string record = record_of(line.text);
    const auto colon = record.find(':');
    if (colon == std::string::npos) return false;
    const View label = without_trailing_blanks(View(record).substr(0, colon));
    const View value = without_blanks_around(View(record).substr(colon + 1));
    return label.ends_with(head.label) && value.starts_with(head.name);
}

bool begins_constraint(const SourceLine& line) {
    return line.kind == LineKind::keyword && record_of(line.text).starts_with("$CONSTRAINT");
}

// Builds the economy from one model's files.
class Reader {
  public:
    Reader(const ModelLines& lines, const ModelOutput& output, Economy& economy)
        : lines_(lines),
          header_(read_header(output.header, lines.before)),
          statements_(read_generator(output.generator)),
          economy_(economy) {}

    void read() {
        economy_.model = lines_.model.name;
        economy_.line = lines_.model.line;
        read_constraints();
        economy_.references_lost = header_.references_lost;
        read_names();
        read_declarations();
        for (const Statement& statement : statements_) read_statement(statement);
        read_constraint_text();
        order_names();
    }

  private:
    void read_names() {
        for (const Symbol& symbol : header_.symbols) {
            Name& name = economy_.names.emplace_back();
            name.name = symbol.name;
            name.kind = symbol.kind;
            if (symbol.kind == Kind::set) name.dimension = 0;
            for (const int number : symbol.references) {
                if (const int line = lines_.in_file(number); line > 0)
                    name.references.push_back(line);
            }
        }
        for (Name& name : economy_.names) names_.emplace(name.name, &name);
    }

    Name* find(View name) {
        const auto found = names_.find(name);
        return found == names_.end() ? nullptr : found->second;
    }

    // The list of variables and the statements that declare them are in the same order.
    void read_declarations() {
        auto statement = statements_.begin();
        for (const Variable& variable : header_.variables) {
            const View entry = name_in_value(variable.entry).name;
            const auto declares = [&](const Statement& candidate) {
                return (candidate.form == Form::name ||
                        (candidate.form == Form::head && candidate.label == "V")) &&
                       candidate.name == entry;
            };
            const auto found = std::find_if(statement, statements_.end(), declares);
            if (found == statements_.end()) continue;
            statement = found + 1;
            declare(*found, variable);
        }
    }

    // A name may be declared again, which changes nothing.
    void declare(const Statement& statement, const Variable& variable) {
        Name* const name = find(statement.name);
        if (name == nullptr) return;
        const int line = lines_.in_file(statement.line);
        if (name->is_declared) {
            economy_.repeated.push_back({name->name, line});
            return;
        }
        name->is_declared = true;
        name->declared = line;
        if (statement.form == Form::name) name->description = variable.description;
        set_arguments(*name, statement.arguments);
        declared_.push_back(name);
    }

    // Declared names stand in the order of their declarations, the others behind them as listed.
    void order_names() {
        std::vector<Name> ordered;
        ordered.reserve(economy_.names.size());
        std::vector<bool> placed(economy_.names.size(), false);
        for (Name* const name : declared_) {
            placed[static_cast<std::size_t>(name - economy_.names.data())] = true;
            ordered.push_back(std::move(*name));
        }
        for (std::size_t i = 0; i < placed.size(); ++i) {
            if (!placed[i]) ordered.push_back(std::move(economy_.names[i]));
        }
        economy_.names = std::move(ordered);
    }

    static void set_arguments(Name& name, const std::vector<std::string>& arguments) {
        if (name.dimension >= 0) return;
        name.dimension = static_cast<int>(arguments.size());
        name.arguments = arguments;
    }

    void read_statement(const Statement& statement) {
        add_text(statement.condition);
        switch (statement.form) {
        case Form::banner: read_banner(statement); break;
        case Form::head: read_head(statement); break;
        case Form::more: read_more(statement); break;
        case Form::value: read_value(statement); break;
        case Form::loop: read_loop(statement); break;
        case Form::option: outside_ = true; break;
        case Form::name:
            if (statement.name.empty()) economy_.nameless.push_back(lines_.in_file(statement.line));
            break;
        default: break;
        }
    }

    void read_loop(const Statement& statement) {
        for (const std::string& set : statement.arguments) add_text(set);
        economy_.loops.push_back({statement.arguments, lines_.in_file(statement.line)});
    }

    // All report records of the model are one block.
    void read_banner(const Statement& statement) {
        block_ = none;
        outside_ = false;
        if (statement.label != "$REPORT") return;
        const auto report =
            std::find_if(economy_.blocks.begin(), economy_.blocks.end(),
                         [](const Block& block) { return block.label == "REPORT"; });
        block_ = static_cast<std::size_t>(report - economy_.blocks.begin());
        last_line_ = lines_.in_file(statement.line);
        if (report != economy_.blocks.end()) return;
        Block& block = economy_.blocks.emplace_back();
        block.label = "REPORT";
        block.line = last_line_;
    }

    void read_head(const Statement& statement) {
        if (Name* const name = find(statement.name)) set_arguments(*name, statement.arguments);
        if (statement.label == "$PROD" || statement.label == "$DEMAND")
            return open_block(statement);
        if (block_ == none) return;
        Entry& entry = economy_.blocks[block_].entries.emplace_back();
        entry.label = statement.label;
        entry.name = statement.name;
        entry.reference = reference(statement);
        entry.line = own_line(statement);
        entry.outside = outside_;
        last_line_ = std::max(last_line_, entry.line);
        const int shown = lines_.in_file(statement.line);
        if (entry.line == 0 || entry.line == shown) return;
        move_first_reference(statement.name, shown, entry.line);
        for (const std::string& argument : statement.arguments)
            move_first_reference(argument, shown, entry.line);
    }

    void open_block(const Statement& statement) {
        outside_ = false;
        block_ = economy_.blocks.size();
        Block& block = economy_.blocks.emplace_back();
        block.label = statement.label.substr(1);
        block.name = statement.name;
        block.reference = reference(statement);
        block.line = lines_.in_file(statement.line);
        last_line_ = block.line;
    }

    // The translator has often read a further record before it writes an entry of one field, and
    // shows the number of that one. Entries come in the order of their records.
    int own_line(const Statement& statement) const {
        const int shown = lines_.in_file(statement.line);
        const int last = shown > 0 ? shown : lines_.model.last;
        for (int line = std::max(last_line_, lines_.model.line) + 1; line <= last; ++line) {
            if (begins_entry(lines_.at(line), statement)) return line;
        }
        return shown;
    }

    // A name that first occurs in such an entry is listed with that number too.
    void move_first_reference(View word, int from, int to) {
        Name* const name = find(word);
        if (name == nullptr || name->references.empty()) return;
        if (name->references.front() == from) name->references.front() = to;
    }

    std::vector<Field>* fields() {
        if (block_ == none) return nullptr;
        Block& block = economy_.blocks[block_];
        return block.entries.empty() ? &block.fields : &block.entries.back().fields;
    }

    void read_more(const Statement& statement) {
        if (Name* const name = find(statement.name)) set_arguments(*name, statement.arguments);
        add_field({statement.label, reference(statement), statement.name,
                   lines_.in_file(statement.line)});
    }

    void read_value(const Statement& statement) {
        add_text(statement.value);
        const ValueName value = name_in_value(statement.value);
        if (Name* const name = find(value.name); name != nullptr && value.known)
            set_arguments(*name, value.arguments);
        add_field({statement.label, statement.value, "", lines_.in_file(statement.line)});
    }

    void add_field(Field field) {
        std::vector<Field>* const row = fields();
        if (row == nullptr) return;
        last_line_ = std::max(last_line_, field.line);
        row->push_back(std::move(field));
    }

    void add_text(View text) {
        if (!without_blanks_around(text).empty()) economy_.free_text.append(text).append("\n");
    }

    // The translator lists them in the order of their blocks.
    void read_constraints() {
        economy_.constraints = header_.constraints;
        for (int line = lines_.model.line; line <= lines_.model.last; ++line) {
            if (begins_constraint(lines_.at(line))) economy_.constraint_lines.push_back(line);
        }
        economy_.constraint_lines.resize(economy_.constraints.size());
    }

    // Without the lines that say which variable an equation is for: that is no use of it.
    void read_constraint_text() {
        View text = header_.constraint_text;
        while (!text.empty()) {
            const View line = take_line(text);
            if (line.find(" Complementary equation(s) for ") == View::npos) add_text(line);
        }
    }

    static constexpr std::size_t none = static_cast<std::size_t>(-1);

    const ModelLines& lines_;
    const Header header_;
    const std::vector<Statement> statements_;
    Economy& economy_;
    std::unordered_map<View, Name*> names_;
    std::vector<Name*> declared_;
    std::size_t block_ = none;  // index of the open block
    bool outside_ = false;      // an option stands behind the block's opening line
    int last_line_ = 0;         // of the record that was met last, in the file
};

}  // namespace

Economy read_economy(const Source& source, std::size_t index, const std::vector<bool>& left_out,
                     const ModelOutput& output) {
    Economy economy;
    if (index >= source.models.size()) return economy;
    const ModelLines lines{source, source.models[index], lines_before(source, index, left_out)};
    Reader(lines, output, economy).read();
    return economy;
}

const Name* find_name(const Economy& economy, std::string_view name) {
    const auto found = std::find_if(economy.names.begin(), economy.names.end(),
                                    [&](const Name& known) { return known.name == name; });
    return found == economy.names.end() ? nullptr : &*found;
}

}  // namespace orvex::frontend
