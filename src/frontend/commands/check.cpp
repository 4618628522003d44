#include "frontend/commands/check.h"

#include "frontend/base/bytes.h"
#include "frontend/commands/diagnose.h"
#include "frontend/findings/failure.h"
#include "frontend/findings/messages.h"
#include "frontend/findings/place.h"
#include "frontend/findings/spelling.h"
#include "frontend/findings/wording.h"
#include "frontend/rules/warnings.h"
#include "frontend/translator/generator.h"
#include "frontend/translator/header.h"

#include <algorithm>
#include <map>
#include <set>
#include <string_view>
#include <utility>

namespace orvex::frontend {

namespace {

// The input with what must not be translated turned into comments: byte for byte as long as the
// file, so that lines and offsets stay what they are.
struct Input {
    std::string bytes;
    std::vector<bool> silenced;       // for each line; [0] is not used
    std::vector<std::string> names;   // of the models that are left, in their order
    std::vector<std::size_t> models;  // and their index in source.models
};

struct Search {
    const Source& source;
    const Options& options;
    const std::string& program;
    const Workplace& place;
    Input input;
    Checked checked;
    std::size_t errors = 0;
};

// Turns a line into a comment. False where it is one already.
bool silence(Search& search, int line) {
    const auto index = static_cast<std::size_t>(line);
    if (search.input.silenced[index] || line_at(search.source, line).text.empty()) return false;
    search.input.silenced[index] = true;
    search.input.bytes[line_at(search.source, line).offset] = '*';
    return true;
}

void add_error(Search& search, std::string code, std::string message, Span span) {
    search.checked.findings.push_back(
        failure(std::move(code), std::move(message), std::move(span)));
}

// Whether a model's name can be that of its outputs; says why not.
bool accept_name(Search& search, const ModelText& model, std::map<std::string, int>& lines) {
    const std::string quoted = "`" + model.name + "`";
    const Span span = record_span(search.source, model.line);
    if (model.name.empty() ||
        model.name.find_first_of(std::string_view("/\0", 2)) != std::string::npos) {
        add_error(search, "model-slash", "model name " + quoted + " is no file name", span);
        return false;
    }
    const auto [first, is_new] = lines.emplace(model.name, model.line);
    if (is_new) return true;
    add_error(search, "model-twice", "model " + quoted + " stands in the file twice", span);
    search.checked.findings.back().remarks.insert(
        search.checked.findings.back().remarks.begin(),
        {Severity::note, "the first one is here", record_span(search.source, first->second)});
    return false;
}

// Silences what would begin a model: without its end, a model has the lines of the next one in it.
void leave_out(Search& search, const ModelText& model) {
    for (int line = model.line; line <= model.last; ++line) {
        if (record_of(line_at(search.source, line).text).starts_with("$MODEL:")) {
            silence(search, line);
        }
    }
}

// Chooses the models to be translated, and silences the others.
void choose_models(Search& search) {
    std::string wanted = search.options.model;
    make_upper(wanted);
    std::map<std::string, int> lines;
    std::vector<std::string> all;
    for (std::size_t i = 0; i < search.source.models.size(); ++i) {
        const ModelText& model = search.source.models[i];
        all.push_back(model.name);
        const bool asked = wanted.empty() || wanted == model.name;
        const bool taken = asked && accept_name(search, model, lines);
        search.checked.left_out.push_back(!taken);
        if (taken) {
            search.input.names.push_back(model.name);
            search.input.models.push_back(i);
        } else {
            leave_out(search, model);
        }
    }
    const bool found = std::find(all.begin(), all.end(), wanted) != all.end();
    if (!wanted.empty() && !found) {
        add_error(search, "model-unknown", "no model is named `" + search.options.model + "`",
                  whole_file(search.source.path));
        if (const std::string near = nearest(wanted, all); !near.empty()) {
            search.checked.findings.back().remarks = {
                {Severity::help, "did you mean `" + near + "`?", {}}};
        }
    }
}

// The file's name without its folder and its extension, with that of the file that the host's
// program writes.
std::string usual_put_file(const std::string& path) {
    std::string name = path.substr(path.rfind('/') + 1);
    if (path == "<stdin>") name = "stdin";
    if (const std::size_t dot = name.rfind('.'); dot != std::string::npos && dot > 0)
        name.resize(dot);
    return name + ".scr";
}

RunResult translate(const Search& search, std::string_view input) {
    const Options& options = search.options;
    const RunSettings settings{
        options.put_file.empty() ? usual_put_file(search.source.path) : options.put_file,
        options.time, options.first_model, options.first_constraint};
    return run_translator(search.program, search.place, input, search.input.names, settings);
}

bool has_finding(const Search& search, const std::string& message) {
    return std::any_of(search.checked.findings.begin(), search.checked.findings.end(),
                       [&](const Finding& finding) { return finding.message == message; });
}

// What the system kept the translator from: a full disk, an unreadable file. True where it was
// anything.
bool add_system_messages(Search& search, std::string_view text) {
    bool any = false;
    for (const std::string_view line : lines_of(text)) {
        const auto known = recognise(line);
        if (!known) continue;
        any = true;
        const std::string message = plain_words(line, known->values);
        if (has_finding(search, message)) continue;  // of a run before
        add_error(search, known->entry->code, message, whole_file(search.source.path));
    }
    return any;
}

// The whole input, as far as it is not silenced. Where the outputs tell nothing, a finding says
// why.
RunResult translate_all(Search& search) {
    RunResult run = translate(search, search.input.bytes);
    const bool explained = add_system_messages(search, run.err);
    if (!run.cause.empty() && !explained) {
        add_error(search, "result-unknown", "the translator's result is unknown: " + run.cause,
                  whole_file(search.source.path));
    }
    return run;
}

void take_models(Search& search, const RunResult& run) {
    for (std::size_t i = 0; i < run.models.size(); ++i) {
        if (run.models[i].complete) {
            search.checked.models.push_back({search.input.models[i], run.models[i]});
        }
    }
}

// How the translator shows a line: cut to 255 columns, without blanks at its end.
std::string_view shown(std::string_view line) {
    line = line.substr(0, 255);
    return line.substr(0, line.find_last_not_of(' ') + 1);
}

// The line that an overflow stopped at. Its report replaces the numbered lines, so it is the first
// line with the text of the last record, at or behind the one of the last statement.
int overflow_line(const Search& search, const Fault& fault, std::string_view last_record) {
    const ModelText& model = search.source.models[fault.model];
    int line = model.line + 1;
    for (const Statement& statement : read_generator(fault.generator)) {
        if (statement.line == 0) continue;
        line = std::max(line, file_line(search.source, statement.line, search.checked.left_out));
    }
    while (line < model.last && shown(line_at(search.source, line).text) != last_record) ++line;
    return line;
}

int last_line_read(const Search& search, const Fault& fault, const RunResult& run) {
    const Header header = read_header(
        fault.header, lines_before(search.source, fault.model, search.checked.left_out));
    if (header.last_line != 0) {
        return file_line(search.source, header.last_line, search.checked.left_out);
    }
    return overflow_line(search, fault, run.last_record);
}

bool is_record(LineKind kind) { return kind != LineKind::blank && kind != LineKind::comment; }

int record_above(const Search& search, int line) {
    do {
        --line;
    } while (line > 1 && (!is_record(line_at(search.source, line).kind) ||
                          search.input.silenced[static_cast<std::size_t>(line)]));
    return line;
}

// The translator reads the record behind an entry of one field before it enters the entry's name.
// So when a name is refused, the input is tried once more without the last record read: if the
// fault is still there, it is that of the record above.
int failing_line(const Search& search, const std::string& message, int last) {
    const auto known = recognise(message);
    if (!known ||
        !(known->entry->code.starts_with("addsym") || known->entry->code == "chrfld-long")) {
        return last;
    }
    const std::string input =
        search.input.bytes.substr(0, line_at(search.source, last).offset) + "$OFFTEXT\n";
    const RunResult run = translate(search, input);
    if (!run.cause.empty()) throw StartFailure{run.cause};
    return run.failed && run.message == message ? record_above(search, last) : last;
}

// The last line that goes with a failing record: its block, its continuations, or, where nothing
// behind it can be judged any more, the rest of the model.
int last_to_silence(const Search& search, const Finding& finding, int line) {
    const Source& source = search.source;
    const auto model = std::find_if(source.models.begin(), source.models.end(),
                                    [&](const ModelText& text) { return text.last >= line; });
    const int end = model == source.models.end() ? line : model->last - (model->closed ? 1 : 0);
    const bool is_keyword = line_at(source, line).kind == LineKind::keyword;
    const std::string record = record_of(line_at(source, line).text);
    const bool table_is_full = finding.code == "addsym-full" || finding.code == "sloop-full";
    if (table_is_full) return end;
    if (is_keyword && finding.code.starts_with("keyword")) {
        const std::string_view keyword = first_word(record).substr(1);
        if (stands_outside(keyword) || meant_keyword(keyword) == "OFFTEXT") return end;
    }
    if (line_at(source, line).kind == LineKind::continuation) return line;
    int last = line;
    for (int next = line + 1; next <= end; ++next) {
        const SourceLine& candidate = line_at(source, next);
        const bool belongs =
            is_keyword ? candidate.block == line : candidate.kind == LineKind::continuation;
        if (belongs) last = next;
        if (!belongs && is_record(candidate.kind)) break;
    }
    return last;
}

bool silence_record(Search& search, const Finding& finding, int line) {
    const int last = last_to_silence(search, finding, line);
    bool any = false;
    for (int next = line; next <= last; ++next) {
        if (is_record(line_at(search.source, next).kind)) any = silence(search, next) || any;
    }
    return any;
}

// Whether a name stands on another line that was made a comment.
bool is_silenced(const Search& search, std::string_view name, int but_for) {
    for (std::size_t i = 0; i < search.source.lines.size(); ++i) {
        const int line = static_cast<int>(i) + 1;
        if (search.input.silenced[i + 1] && line != but_for &&
            find_word(search.source.lines[i].text, name) != std::string_view::npos) {
            return true;
        }
    }
    return false;
}

// Whether the fault may be due only to lines that were made comments: a name that they would have
// declared is not known, or was taken for what its first use makes it.
bool is_consequence(const Search& search, const Finding& finding, const Fault& fault) {
    static const std::set<std::string_view> of_names = {"addsym-undeclared", "chksym-unknown",
                                                        "addsym-type", "addsym-dimension"};
    if (!of_names.contains(finding.code)) return false;
    const auto known = recognise(fault.message);
    const std::string& name = known->values.at("name");
    for (const Statement& statement : read_generator(fault.generator)) {
        if (statement.form == Form::name && statement.name == name) return false;
    }
    return is_silenced(search, name, fault.line);
}

Fault fault_of(const Search& search, const RunResult& run) {
    const std::size_t index = run.models.size() - 1;
    Fault fault{run.message, search.input.models[index], 0, run.models[index].generator,
                run.models[index].header};
    const ModelText& model = search.source.models[fault.model];
    const int last = std::clamp(last_line_read(search, fault, run), model.line, model.last);
    fault.line = failing_line(search, run.message, last);
    return fault;
}

// One error more: true when the file is to be translated again.
bool add_fault(Search& search, const RunResult& run) {
    if (run.models.empty() || run.models.size() > search.input.models.size()) return false;
    const Fault fault = fault_of(search, run);
    Finding finding = diagnose(search.source, search.checked.left_out, fault);
    const bool consequence = is_consequence(search, finding, fault);
    if (!consequence && search.options.max_errors != 0 &&
        search.errors == search.options.max_errors) {
        search.checked.more = true;
        return false;
    }
    const bool again = silence_record(search, finding, fault.line);
    if (!consequence) {
        search.checked.findings.push_back(std::move(finding));
        ++search.errors;
    }
    return again;
}

// The names of models with errors are not judged: some of their lines were left out.
void add_warnings(Search& search, const RunResult& last_run) {
    warn_of_lines(search.source, search.checked.left_out, search.checked.findings);
    for (std::size_t i = 0; i < last_run.models.size(); ++i) {
        const std::size_t index = search.input.models[i];
        const ModelText& model = search.source.models[index];
        const auto from = search.input.silenced.begin() + model.line;
        const bool changed = std::find(from, from + (model.last - model.line) + 1, true) !=
                             from + (model.last - model.line) + 1;
        if (changed || !last_run.models[i].complete) continue;
        const Economy economy =
            read_economy(search.source, index, search.checked.left_out, last_run.models[i]);
        warn_of_names(search.source, economy, search.checked.findings);
        warn_of_rows(search.source, economy, search.checked.findings);
    }
    apply_levels(search.options, search.checked.findings);
}

}  // namespace

Checked check(const Source& source, const Options& options, const std::string& program,
              const Workplace& place) {
    Search search{source, options, program, place, {source.bytes, {}, {}, {}}, {}, 0};
    search.input.silenced.resize(source.lines.size() + 1);
    choose_models(search);
    RunResult run;
    if (!search.input.names.empty()) {
        run = translate_all(search);
        take_models(search, run);
        while (run.failed && add_fault(search, run)) run = translate_all(search);
    }
    add_warnings(search, run);
    std::stable_sort(search.checked.findings.begin(), search.checked.findings.end(),
                     [](const Finding& a, const Finding& b) { return a.span.line < b.span.line; });
    return std::move(search.checked);
}

}  // namespace orvex::frontend
