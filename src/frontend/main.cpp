// orvex, the user-facing program: it checks and translates ORVEX models and shows what they
// contain.
#include "frontend/base/spelling.h"
#include "frontend/base/streams.h"
#include "frontend/cli/command_line.h"
#include "frontend/cli/inputs.h"
#include "frontend/cli/reporter.h"
#include "frontend/commands/balance.h"
#include "frontend/commands/check.h"
#include "frontend/commands/expand.h"
#include "frontend/commands/explain.h"
#include "frontend/commands/fmt.h"
#include "frontend/commands/graph.h"
#include "frontend/commands/info.h"
#include "frontend/commands/translate.h"
#include "frontend/findings/messages.h"
#include "frontend/server/loop.h"
#include "frontend/server/self_check.h"

#include <exception>
#include <new>
#include <string>
#include <vector>

namespace orvex::frontend {

namespace {

int print(const std::string& text, int status) {
    Stream out;
    put(out, text);
    if (flush(out)) return status;
    Stream err{2, failure_line(out), 0};
    flush(err);
    return 2;
}

int explain_codes(const Options& options) {
    std::string text;
    for (const std::string& code : options.files) {
        const std::string entry = explain(code, use_colour(Stream(), options.colour));
        if (entry.empty()) {
            std::vector<std::string> codes;
            for (const MessageEntry& known : message_index()) codes.push_back(known.code);
            const std::string near = nearest_word(code, codes);
            throw UsageError{"unknown code `" + code + "`", near.empty()
                                                                ? "`orvex codes` lists the codes"
                                                                : "did you mean `" + near + "`?"};
        }
        if (!text.empty()) text += "\n";
        text += entry;
    }
    return print(text, 0);
}

int run(int argc, char** argv) {
    const ParsedCommandLine parsed = parse_command_line(argc, argv);
    const Options& options = parsed.options;
    if (parsed.done) {
        return parsed.status == 0 ? print(parsed.text, 0)
                                  : report_usage(options, parsed.text, parsed.hint);
    }
    try {
        switch (options.command) {
        case Command::explain: return explain_codes(options);
        case Command::codes: return print(list_codes(), 0);
        case Command::check: return run_check(options);
        case Command::fmt: return run_fmt(options);
        case Command::translate: return run_translate(options);
        case Command::info: return run_info(options);
        case Command::graph: return run_graph(options);
        case Command::expand: return run_expand(options);
        case Command::balance: return run_balance(options);
        case Command::lsp:
            return options.self_check ? run_self_check(options) : run_server(options);
        case Command::none: break;
        }
    } catch (const UsageError& error) {
        return report_usage(options, error.text, error.hint);
    }
    return 0;
}

}  // namespace

}  // namespace orvex::frontend

int main(int argc, char** argv) {
    using namespace orvex::frontend;
    guard_streams();
    try {
        return run(argc, argv);
    } catch (const std::bad_alloc&) {
        Stream err{2, "error: not enough memory\n", 0};
        flush(err);
        return 2;
    } catch (const std::exception& error) {
        Stream err{2, std::string("error: ") + error.what() + "\n", 0};
        flush(err);
        return 2;
    }
}
