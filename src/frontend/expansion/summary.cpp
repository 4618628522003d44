#include "frontend/expansion/summary.h"

#include "frontend/findings/failure.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <limits>
#include <nlohmann/json.hpp>
#include <string_view>
#include <utility>

namespace orvex::frontend {

namespace {

using Part = Statement::Part;

constexpr int summary_version = 2;
constexpr std::uint64_t largest = std::numeric_limits<std::uint64_t>::max();

std::uint64_t product(std::uint64_t a, std::uint64_t b) {
    return b != 0 && a > largest / b ? largest : a * b;
}

std::uint64_t sum(std::uint64_t a, std::uint64_t b) { return a > largest - b ? largest : a + b; }

void count(BlockSize& block, Part part, std::uint64_t passes) {
    std::uint64_t ignored = 0;
    std::uint64_t& number = part == Part::head    ? block.blocks
                            : part == Part::entry ? block.entries
                            : part == Part::field ? block.fields
                                                  : ignored;
    number = sum(number, passes);
}

ModelSize sized(const GeneratedModel& generated, const GeneratorProgram& program,
                const std::vector<std::uint64_t>& passes) {
    const ModelText& text = generated.source.models[generated.model.node];
    ModelSize size{generated.source.path, text.name, text.line, false, {}};
    for (const PrintedBlock& block : program.blocks)
        size.blocks.push_back({block.name, line_of_place(generated, block.place), 0, 0, 0});
    for (std::size_t i = 0; i < program.statements.size(); ++i) {
        const Statement& statement = program.statements[i];
        if (statement.kind == Statement::Kind::put && statement.block != no_index)
            count(size.blocks[statement.block], statement.part, passes[i]);
    }
    return size;
}

// The passes of each statement if everything in a loop is run.
class Bounder {
  public:
    Bounder(const GeneratorProgram& program, const Data& data, const SetSizes& sizes)
        : program_(program), data_(data), sizes_(sizes), passes_(program.statements.size()) {}

    std::vector<std::uint64_t> passes() {
        bound(0, static_cast<Index>(program_.statements.size()), 1);
        return std::move(passes_);
    }

    // The sets whose size is unknown.
    const std::vector<Flaw>& flaws() const { return flaws_; }

  private:
    void bound(Index first, Index end, std::uint64_t outer) {
        for (Index at = first; at < end; at = program_.statements[at].end) {
            const Statement& statement = program_.statements[at];
            passes_[at] = outer;
            if (statement.kind == Statement::Kind::put) continue;
            for (Index i = 0; i < statement.count; ++i) {
                const Index name = program_.sets[statement.first + i].name;
                passes_[at] = product(passes_[at], size_of_set(name));
            }
            bound(at + 1, statement.end, passes_[at]);
        }
    }

    std::uint64_t size_of_set(Index name) {
        const std::string& text = program_.names.text(name);
        const auto given = sizes_.find(text);
        if (given != sizes_.end()) return given->second;
        if (const DataSet* const set = find_set(data_, text)) return set->members.size();
        const bool is_new = std::find(missing_.begin(), missing_.end(), name) == missing_.end();
        if (is_new) {
            missing_.push_back(name);
            flaws_.push_back({"data-missing", "size", {{"name", text}}, program_.uses[name].place});
        }
        return 0;
    }

    const GeneratorProgram& program_;
    const Data& data_;
    const SetSizes& sizes_;
    std::vector<std::uint64_t> passes_;
    std::vector<Index> missing_;
    std::vector<Flaw> flaws_;
};

std::uint64_t lines_of(const BlockSize& block) { return sum(block.entries, block.fields); }

BlockSize total_of(const ModelSize& size) {
    BlockSize total;
    for (const BlockSize& block : size.blocks) {
        total.blocks = sum(total.blocks, block.blocks);
        total.entries = sum(total.entries, block.entries);
        total.fields = sum(total.fields, block.fields);
    }
    return total;
}

// The block with the most lines; null if there is none.
const BlockSize* dominant_of(const ModelSize& size) {
    const auto found = std::max_element(
        size.blocks.begin(), size.blocks.end(),
        [](const BlockSize& a, const BlockSize& b) { return lines_of(a) < lines_of(b); });
    return found == size.blocks.end() || lines_of(*found) == 0 ? nullptr : &*found;
}

long percentage(std::uint64_t part, std::uint64_t whole) {
    return std::lround(100.0 * static_cast<double>(part) / static_cast<double>(whole));
}

using Row = std::array<std::string, 5>;

Row row_of(const BlockSize& block) {
    return {block.name, block.line == 0 ? "" : std::to_string(block.line),
            std::to_string(block.blocks), std::to_string(block.entries),
            std::to_string(block.fields)};
}

// The first column is left-aligned, the others right-aligned.
std::string table_of(const std::vector<Row>& rows) {
    std::array<std::size_t, 5> widths{};
    for (const Row& row : rows) {
        for (std::size_t i = 0; i < row.size(); ++i) widths[i] = std::max(widths[i], row[i].size());
    }
    std::string text;
    for (const Row& row : rows) {
        text.append("  ").append(row[0]).append(widths[0] - row[0].size(), ' ');
        for (std::size_t i = 1; i < row.size(); ++i)
            text.append(2 + widths[i] - row[i].size(), ' ').append(row[i]);
        text += '\n';
    }
    return text;
}

using Json = nlohmann::ordered_json;

Json json_of(const BlockSize& block) {
    return {{"block", block.name},
            {"line", block.line},
            {"blocks", block.blocks},
            {"entries", block.entries},
            {"fields", block.fields}};
}

}  // namespace

ModelSize size_of(const GeneratedModel& generated, const Expansion& expansion) {
    return sized(generated, expansion.program, expansion.passes);
}

bool bound_size(const GeneratedModel& generated, DataFiles& files, const SetSizes& sizes,
                ModelSize& size, std::vector<Finding>& findings) {
    note_names_in_constraints(generated.model, files);
    std::vector<Flaw> flaws;
    const GeneratorProgram program = read_program(generated.generator, flaws);
    Data data;
    if (!make_data(files, program, variables_of(generated.model), data, findings)) return false;
    Bounder bounder(program, data, sizes);
    size = sized(generated, program, bounder.passes());
    size.is_bound = true;
    flaws.insert(flaws.end(), bounder.flaws().begin(), bounder.flaws().end());
    add_findings(generated, flaws, findings);
    return flaws.empty();
}

std::string size_text(const ModelSize& size) {
    const BlockSize total = total_of(size);
    std::string text = "model " + size.model;
    if (size.is_bound) text += ", an upper bound: all conditions and guards are assumed to be true";
    std::vector<Row> rows = {{"block", "line", "blocks", "entries", "fields"}};
    for (const BlockSize& block : size.blocks) rows.push_back(row_of(block));
    rows.push_back(row_of(total));
    rows.back()[0] = "total";
    text.append("\n").append(table_of(rows));
    if (const BlockSize* const block = dominant_of(size)) {
        text.append("  largest: ").append(block->name).append(", ");
        text.append(std::to_string(percentage(lines_of(*block), lines_of(total))));
        text.append("% of the entries and fields\n");
    }
    return text;
}

std::string size_json(const ModelSize& size) {
    const BlockSize* const most = dominant_of(size);
    Json line = {{"version", summary_version}, {"type", "size"},    {"model", size.model},
                 {"path", size.path},          {"line", size.line}, {"upper_bound", size.is_bound},
                 {"blocks", Json::array()}};
    for (const BlockSize& block : size.blocks) line["blocks"].push_back(json_of(block));
    line["most"] = most == nullptr ? Json() : Json(most->name);
    return line.dump(-1, ' ', false, Json::error_handler_t::replace) + '\n';
}

}  // namespace orvex::frontend
