// ORVEX in Visual Studio Code: starts `orvex lsp`, and shows the explanation of a code.
"use strict";

const { execFile } = require("node:child_process");
const { promisify } = require("node:util");
const vscode = require("vscode");
const { LanguageClient } = require("vscode-languageclient/node");

const SCHEME = "orvex";
let client;

const explanationOf = (code) => vscode.Uri.parse(`${SCHEME}:${code}.md`);

// Makes the code of a finding a link to its explanation.
function linkCodes(findings) {
    for (const finding of findings) {
        if (typeof finding.code === "string")
            finding.code = { value: finding.code, target: explanationOf(finding.code) };
    }
}

const middleware = {
    handleDiagnostics(uri, findings, next) {
        linkCodes(findings);
        next(uri, findings);
    },
    async provideDiagnostics(document, previous, token, next) {
        const report = await next(document, previous, token);
        linkCodes(report?.items ?? []);
        return report;
    },
};

async function start() {
    const program = vscode.workspace.getConfiguration("orvex").get("path") || "orvex";
    try {
        await promisify(execFile)(program, ["--version"]);
    } catch (error) {
        sayMissing(program, error);
        return;
    }
    client = new LanguageClient("orvex", "ORVEX", { command: program, args: ["lsp"] },
        { documentSelector: [{ language: "orvex" }], middleware });
    await client.start();
}

async function sayMissing(program, error) {
    const reason = error.code === "ENOENT" ? "it is not there" : error.message;
    const settings = "Open Settings";
    const chosen = await vscode.window.showErrorMessage(
        `\`${program}\` cannot be run: ${reason}. Install orvex, or set "orvex.path" to where it is. ` +
        "Until then models are only coloured.", settings);
    if (chosen === settings)
        vscode.commands.executeCommand("workbench.action.openSettings", "orvex.path");
}

async function restart() {
    const old = client;
    client = undefined;
    await old?.dispose();
    await start();
}

// The code of the finding that the cursor is on.
function codeAtCursor() {
    const editor = vscode.window.activeTextEditor;
    if (!editor) return undefined;
    const found = vscode.languages.getDiagnostics(editor.document.uri).find((finding) =>
        finding.source === "orvex" && finding.range.contains(editor.selection.active));
    return found?.code?.value ?? found?.code;
}

async function explain(code) {
    code ??= codeAtCursor() ?? await vscode.window.showInputBox({ prompt: "The code of a finding" });
    if (code) await vscode.commands.executeCommand("markdown.showPreview", explanationOf(code));
}

const explanations = {
    async provideTextDocumentContent(uri) {
        const code = uri.path.replace(/\.md$/, "");
        if (!client) return "The server of ORVEX does not run.";
        try {
            return (await client.sendRequest("orvex/explain", { code })).value;
        } catch (error) {
            return error.message;
        }
    },
};

async function activate(context) {
    context.subscriptions.push(
        vscode.workspace.registerTextDocumentContentProvider(SCHEME, explanations),
        vscode.commands.registerCommand("orvex.explain", explain),
        vscode.commands.registerCommand("orvex.restart", restart),
        vscode.workspace.onDidChangeConfiguration((event) =>
            event.affectsConfiguration("orvex.path") && restart()));
    await start();
}

const deactivate = () => client?.stop();

module.exports = { activate, deactivate };
