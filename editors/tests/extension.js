// The extension for Visual Studio Code as it is packed, in the folder of the first argument, with
// a stand-in for the editor: that all it needs is in the package, that it says so where there is
// no `orvex`, and that it shows explanations and links codes to them.
"use strict";

const assert = require("node:assert");
const Module = require("node:module");
const path = require("node:path");
const { Client, program } = require("./client.js");

const extension = path.resolve(process.argv[2]);
const said = [], commands = {}, contents = {}, shown = [];
let programSet = "";

// Whatever the client's library extends or asks of the editor.
const anything = () => new Proxy(class {}, {
    get: (target, name) => name in target ? target[name] : name === "then" ? undefined : anything(),
    apply: () => anything(),
});
const withAnything = (known) => new Proxy(known, {
    get: (target, name) => name in target ? target[name] : anything(),
});
const editor = withAnything({
    Uri: { parse: (text) => ({ text, path: text.slice(text.indexOf(":") + 1) }) },
    window: withAnything({ showErrorMessage: async (text) => void said.push(text) }),
    workspace: withAnything({
        getConfiguration: () => ({ get: () => programSet }),
        registerTextDocumentContentProvider: (scheme, provider) => void (contents[scheme] = provider),
        onDidChangeConfiguration: () => {},
    }),
    commands: withAnything({
        registerCommand: (name, run) => void (commands[name] = run),
        executeCommand: async (...parts) => void shown.push(parts),
    }),
});

// In place of the library's client: the protocol's own, with what the extension gives to it.
let given, server;
class LanguageClient {
    constructor(id, name, run, options) {
        given = { run, options };
    }
    async start() {
        server = new Client();
        await server.start();
    }
    sendRequest(method, params) {
        return server.ask(method, params);
    }
    stop() {
        return server.stop();
    }
    async dispose() {
        await this.stop();
    }
}

const load = Module._load;
Module._load = (name, ...rest) => {
    if (name === "vscode") return editor;
    const loaded = load(name, ...rest);
    return name === "vscode-languageclient/node" ? { ...loaded, LanguageClient } : loaded;
};

async function checkExtension() {
    const { main } = require(path.join(extension, "package.json"));
    const { activate, deactivate } = require(path.join(extension, main));

    programSet = "/no/such/orvex";
    await activate({ subscriptions: [] });
    assert.match(said.join(), /\/no\/such\/orvex.*cannot be run.*orvex\.path/);
    assert.strictEqual(server, undefined);

    programSet = program;
    await commands["orvex.restart"]();
    assert.deepStrictEqual(given.run, { command: program, args: ["lsp"] });
    assert.strictEqual(said.length, 1);
    await commands["orvex.explain"]("name-unused");
    const [, uri] = shown.at(-1);
    assert.strictEqual(uri.text, "orvex:name-unused.md");
    assert.match(await contents.orvex.provideTextDocumentContent(uri), /^## name-unused/);
    assert.match(await contents.orvex.provideTextDocumentContent({ path: "x.md" }), /`x`/);

    const pulled = { items: [{ code: "name-unused" }] }, pushed = [{ code: "name-unused" }];
    await given.options.middleware.provideDiagnostics({}, "", null, async () => pulled);
    given.options.middleware.handleDiagnostics({}, pushed, () => {});
    for (const [finding] of [pulled.items, pushed])
        assert.strictEqual(finding.code.target.text, "orvex:name-unused.md");
    await deactivate();
}

checkExtension().then(() => console.log("Visual Studio Code: as expected")).catch((error) => {
    console.error(error);
    process.exit(1);
});
