// The methods of the protocol that the server supports.
#include "frontend/server/commands.h"
#include "frontend/server/findings.h"
#include "frontend/server/lifecycle.h"
#include "frontend/server/navigation.h"
#include "frontend/server/server.h"
#include "frontend/server/showing.h"
#include "frontend/server/typing.h"
#include "frontend/server/writing.h"

#include <algorithm>
#include <iterator>

namespace orvex::frontend {

namespace {

constexpr Method methods[] = {
    {"initialize", true, initialize},
    {"initialized", false, ignore_notification},
    {"shutdown", true, shut_down},
    {"exit", false, exit_server},
    {"$/setTrace", false, set_trace},
    {"textDocument/didOpen", false, did_open},
    {"textDocument/didChange", false, did_change},
    {"textDocument/didClose", false, did_close},
    {"textDocument/didSave", false, ignore_notification},
    {"textDocument/diagnostic", true, findings_of_text},
    {"workspace/diagnostic", true, findings_of_folders},
    {"textDocument/codeAction", true, code_actions},
    {"orvex/explain", true, explanation},
    {"workspace/executeCommand", true, execute_command},
    {"textDocument/hover", true, hover},
    {"textDocument/completion", true, completion},
    {"completionItem/resolve", true, resolve_completion},
    {"textDocument/signatureHelp", true, signature_help},
    {"textDocument/semanticTokens/full", true, all_tokens},
    {"textDocument/semanticTokens/full/delta", true, changed_tokens},
    {"textDocument/semanticTokens/range", true, tokens_in_range},
    {"textDocument/foldingRange", true, folding_ranges},
    {"textDocument/selectionRange", true, selection_ranges},
    {"textDocument/inlayHint", true, inlay_hints},
    {"textDocument/codeLens", true, code_lenses},
    {"textDocument/documentLink", true, document_links},
    {"textDocument/definition", true, definition},
    {"textDocument/declaration", true, declaration},
    {"textDocument/references", true, references},
    {"textDocument/documentHighlight", true, highlights},
    {"textDocument/documentSymbol", true, document_symbols},
    {"workspace/symbol", true, workspace_symbols},
    {"textDocument/prepareRename", true, prepare_renaming},
    {"textDocument/rename", true, renaming},
    {"textDocument/formatting", true, formatting},
    {"textDocument/rangeFormatting", true, range_formatting},
    {"textDocument/onTypeFormatting", true, line_formatting},
};

}  // namespace

const Method* find_method(std::string_view name) {
    const auto* const found =
        std::find_if(std::begin(methods), std::end(methods),
                     [&](const Method& method) { return method.name == name; });
    return found == std::end(methods) ? nullptr : found;
}

Json abilities_provided() {
    Json provided = {
        {"hoverProvider", true},
        {"codeActionProvider", {{"codeActionKinds", {"quickfix", "source.fixAll.orvex"}}}},
        {"executeCommandProvider", {{"commands", command_names()}}},
        {"completionProvider",
         {{"triggerCharacters", {"$", ":", "(", ","}}, {"resolveProvider", true}}},
        {"signatureHelpProvider", {{"triggerCharacters", {"(", ","}}}},
        {"definitionProvider", true},
        {"declarationProvider", true},
        {"referencesProvider", true},
        {"documentHighlightProvider", true},
        {"documentSymbolProvider", true},
        {"workspaceSymbolProvider", true},
        {"documentFormattingProvider", true},
        {"documentRangeFormattingProvider", true},
        {"documentOnTypeFormattingProvider", {{"firstTriggerCharacter", "\n"}}},
        {"foldingRangeProvider", true},
        {"selectionRangeProvider", true},
        {"inlayHintProvider", true},
        {"codeLensProvider", {{"resolveProvider", false}}},
        {"documentLinkProvider", {{"resolveProvider", false}}}};
    provided["semanticTokensProvider"] = {
        {"legend", token_legend()}, {"full", {{"delta", true}}}, {"range", true}};
    return provided;
}

}  // namespace orvex::frontend
