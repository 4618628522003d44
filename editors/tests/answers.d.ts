// What the server may send, by method, in the types of the protocol's own package. The tests make
// a JSON Schema of it.
import type * as lsp from "vscode-languageserver-protocol";

type Result<T> = T extends lsp.ProtocolRequestType<any, infer R, any, any, any> ? R : never;
type Params<T> = T extends lsp.ProtocolNotificationType<infer P, any> ? P : never;

export interface Answers {
    "initialize": Result<typeof lsp.InitializeRequest.type>;
    "shutdown": null;
    "textDocument/publishDiagnostics": Params<typeof lsp.PublishDiagnosticsNotification.type>;
    "textDocument/diagnostic": Result<typeof lsp.DocumentDiagnosticRequest.type>;
    "workspace/diagnostic": Result<typeof lsp.WorkspaceDiagnosticRequest.type>;
    "textDocument/codeAction": Result<typeof lsp.CodeActionRequest.type>;
    "textDocument/hover": Result<typeof lsp.HoverRequest.type>;
    "textDocument/completion": Result<typeof lsp.CompletionRequest.type>;
    "completionItem/resolve": Result<typeof lsp.CompletionResolveRequest.type>;
    "textDocument/signatureHelp": Result<typeof lsp.SignatureHelpRequest.type>;
    "textDocument/declaration": Result<typeof lsp.DeclarationRequest.type>;
    "textDocument/definition": Result<typeof lsp.DefinitionRequest.type>;
    "textDocument/references": Result<typeof lsp.ReferencesRequest.type>;
    "textDocument/documentHighlight": Result<typeof lsp.DocumentHighlightRequest.type>;
    "textDocument/documentSymbol": Result<typeof lsp.DocumentSymbolRequest.type>;
    "workspace/symbol": Result<typeof lsp.WorkspaceSymbolRequest.type>;
    "textDocument/prepareRename": Result<typeof lsp.PrepareRenameRequest.type>;
    "textDocument/rename": Result<typeof lsp.RenameRequest.type>;
    "textDocument/formatting": Result<typeof lsp.DocumentFormattingRequest.type>;
    "textDocument/rangeFormatting": Result<typeof lsp.DocumentRangeFormattingRequest.type>;
    "textDocument/onTypeFormatting": Result<typeof lsp.DocumentOnTypeFormattingRequest.type>;
    "textDocument/semanticTokens/full": Result<typeof lsp.SemanticTokensRequest.type>;
    "textDocument/semanticTokens/full/delta": Result<typeof lsp.SemanticTokensDeltaRequest.type>;
    "textDocument/semanticTokens/range": Result<typeof lsp.SemanticTokensRangeRequest.type>;
    "textDocument/foldingRange": Result<typeof lsp.FoldingRangeRequest.type>;
    "textDocument/selectionRange": Result<typeof lsp.SelectionRangeRequest.type>;
    "textDocument/inlayHint": Result<typeof lsp.InlayHintRequest.type>;
    "textDocument/codeLens": Result<typeof lsp.CodeLensRequest.type>;
    "textDocument/documentLink": Result<typeof lsp.DocumentLinkRequest.type>;
    "workspace/executeCommand": string[];
    "$/logTrace": lsp.LogTraceParams;
    "orvex/explain": lsp.MarkupContent;
}
