#include "frontend/translator/judge.h"

#include "frontend/base/bytes.h"
#include "frontend/base/interrupts.h"
#include "frontend/findings/faults.h"
#include "frontend/findings/messages.h"
#include "frontend/syntax/reading.h"
#include "notation/limits.h"
#include "notation/records.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <system_error>

namespace orvex::frontend {

namespace {

char& first_byte(std::string& bytes, const Source& source, Index record) {
    return bytes[source.tree.tokens[source.tree.records[record].token].begin];
}

// Turns a line into a comment of the same length.
void comment_out(std::string& bytes, const Source& source, Index record) {
    if (!line_range(source.tree, record).empty())
        first_byte(bytes, source, record) = notation::comment_mark;
}

bool is_selected(const std::vector<Index>& selected, Index node) {
    return std::binary_search(selected.begin(), selected.end(), node);
}

// Keeps a model that is left out from beginning, and any model that begins inside it, because its
// end is missing.
void comment_out_start(std::string& bytes, const Source& source, const ModelNode& node) {
    for (Index record = node.record; record < node.end; ++record) {
        const std::string_view line = line_text(source, line_of_record(record));
        if (capitals(line.substr(0, notation::model_keyword.size())) == notation::model_keyword)
            comment_out(bytes, source, record);
    }
}

// Appends the lines of a model up to the next one, with everything inside as comments. A line meant
// as an end becomes one.
void append_emptied(std::string& input, const std::string& bytes, const Source& source,
                    const ModelNode& node) {
    for (Index record = node.record; record < node.end; ++record) {
        const RecordNode& line = source.tree.records[record];
        const Range range =
            range_of(source.tree, line.token, source.tree.records[record + 1].token);
        std::string text(text_of(bytes, range));
        if (line.kind == RecordKind::end) {
            text = "$" + std::string(notation::end_keyword) + "\n";
        } else if (record != node.record && !line_range(source.tree, record).empty()) {
            text[0] = notation::comment_mark;
        }
        input += text;
    }
}

RunResult run(const Court& court, std::string_view input) {
    std::vector<std::string> names;
    for (const Index model : court.selected) names.push_back(court.source.models[model].name);
    return run_translator(court.program, court.place, input, names, court.settings);
}

void note_messages(const RunResult& result, Verdict& verdict) {
    for (const std::string_view line : lines_of(result.err)) verdict.messages.emplace_back(line);
    verdict.cause = result.cause;
}

// A line as the translator shows it: cut to its columns, without blanks at its end.
std::string shown(std::string_view line) {
    std::string text(line.substr(0, notation::record_columns));
    std::replace(text.begin(), text.end(), carriage_return, blank_char);
    text.resize(orvex::trimmed(text).size());
    return text;
}

// The first line of the model that matches the last line read, as the run reported it.
int last_line(const Court& court, const Expectation& model, const RunResult& result) {
    const ModelNode& node = court.source.tree.models[model.model];
    for (Index record = node.record; record < node.end; ++record) {
        const int line = line_of_record(record);
        if (shown(line_text(court.source, line)) == result.last_record) return line;
    }
    return line_of_record(node.record);
}

// The number of models that a run accepted; if it stopped, it did so at the next one.
std::size_t taken_by(const RunResult& result) {
    return result.models.size() - (result.failed ? 1 : 0);
}

void check_stop(const Court& court, std::span<const Expectation> models, const RunResult& result,
                Verdict& verdict) {
    if (!result.failed) return;
    const Expectation& model = models[taken_by(result)];
    if (!is_known(court.source, model, result))
        verdict.stops.push_back({model.model, last_line(court, model, result), result.message});
}

void take_outputs(std::span<const Expectation> models, RunResult& result, Verdict& verdict) {
    for (std::size_t i = 0; i < taken_by(result); ++i) {
        const Expectation& model = models[i];
        if (model.fault != Fault::none) verdict.accepted.push_back(model.model);
        verdict.outputs.push_back({model.model, std::move(result.models[i])});
    }
}

// Takes the second run's outputs of the models that the first run did not reach.
void take_later_outputs(std::span<const Expectation> models, std::size_t first, RunResult& second,
                        Verdict& verdict) {
    for (std::size_t i = first; i < taken_by(second); ++i) {
        if (models[i].fault == Fault::none)
            verdict.later_outputs.push_back({models[i].model, std::move(second.models[i])});
    }
}

// Are there models without errors that the run did not reach?
bool leaves_models(std::span<const Expectation> models, const RunResult& result) {
    if (!result.failed) return false;
    const auto rest = models.subspan(taken_by(result) + 1);
    return std::any_of(rest.begin(), rest.end(),
                       [](const Expectation& model) { return model.fault == Fault::none; });
}

}  // namespace

std::string first_input(const Source& source, const std::vector<Index>& selected) {
    std::string bytes = source.bytes;
    for (Index node = 0; node < model_count(source.tree); ++node) {
        if (!is_selected(selected, node))
            comment_out_start(bytes, source, source.tree.models[node]);
    }
    return bytes;
}

std::string second_input(const Source& source, const std::vector<Index>& selected,
                         std::span<const Expectation> models) {
    const std::string bytes = first_input(source, selected);
    const Tree& tree = source.tree;
    std::string input;
    Offset done = 0;
    for (const Expectation& model : models) {
        if (model.fault == Fault::none) continue;
        const ModelNode& node = tree.models[model.model];
        const Range range =
            range_of(tree, tree.records[node.record].token, tree.records[node.end].token);
        input.append(bytes, done, range.begin - done);
        append_emptied(input, bytes, source, node);
        done = range.end;
    }
    return input.append(bytes, done);
}

bool is_known(const Source& source, const Expectation& model, const RunResult& result) {
    if (model.fault == Fault::none) return false;
    const std::optional<Recognised> message = recognise(result.message);
    return message && message->entry->code == code_of(model.fault) &&
           shown(line_text(source, line_of_record(model.read))) == result.last_record;
}

Expectation expectation_of(const Model& model) {
    if (model.errors.empty()) return {model.node};
    return {model.node, model.errors.front().fault, model.errors.front().read};
}

std::future<RunResult> start_judging(const Court& court) {
    // For a smaller file, starting a thread takes longer than it saves.
    constexpr std::size_t large = std::size_t{1} << 20U;
    const bool alone = court.source.bytes.size() < large;
    const auto judge_all = [court] {
        if (court.selected.empty()) return RunResult();
        const bool is_whole = court.selected.size() == court.source.models.size();
        if (is_whole) return run(court, court.source.bytes);
        return run(court, first_input(court.source, court.selected));
    };
    if (alone) return std::async(std::launch::deferred, judge_all);
    try {
        const InterruptsHeld held;
        return std::async(std::launch::async, judge_all);
    } catch (const std::system_error&) {
        // The system provides no more threads.
        return std::async(std::launch::deferred, judge_all);
    }
}

Verdict judge(const Court& court, std::span<const Expectation> models,
              std::future<RunResult> first) {
    Verdict verdict;
    RunResult result = first.get();
    note_messages(result, verdict);
    if (!verdict.cause.empty()) return verdict;
    check_stop(court, models, result, verdict);
    const bool again = leaves_models(models, result) && verdict.stops.empty();
    take_outputs(models, result, verdict);
    if (!again) return verdict;
    RunResult second = run(court, second_input(court.source, court.selected, models));
    note_messages(second, verdict);
    if (!verdict.cause.empty()) return verdict;
    check_stop(court, models, second, verdict);
    take_later_outputs(models, taken_by(result) + 1, second, verdict);
    return verdict;
}

}  // namespace orvex::frontend
