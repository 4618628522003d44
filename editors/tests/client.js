// A client of `orvex lsp` that checks each answer against the types of the protocol's own package,
// and one that sends bytes as they are.
"use strict";

const assert = require("node:assert");
const { spawn } = require("node:child_process");
const path = require("node:path");
const test = require("node:test");
const { pathToFileURL } = require("node:url");
const Ajv = require("ajv");
const lsp = require("vscode-languageserver-protocol/node");
const { createGenerator } = require("ts-json-schema-generator");

const root = path.dirname(path.dirname(__dirname));
const program = process.env.ORVEX ?? path.join(root, "build", "release", "bin", "orvex");

const uriOf = (file) => pathToFileURL(file).href;

// Numbers that the declarations call whole.
const WHOLE = {
    uinteger: { type: "integer", minimum: 0 },
    integer: { type: "integer" },
};

// By method, a routine that tells whether an answer is of its type.
function answerTypes() {
    const file = path.join(__dirname, "answers.d.ts");
    const schema = createGenerator({ path: file, type: "Answers", skipTypeCheck: true })
        .createSchema("Answers");
    Object.assign(schema.definitions, WHOLE);
    const ajv = new Ajv({ strict: false }).addSchema(schema, "answers");
    const types = {};
    for (const [method, type] of Object.entries(schema.definitions.Answers.properties)) {
        // A type that the package does not have would take everything.
        assert.notStrictEqual(Object.keys(type).length, 0, `${method}: its type is unknown`);
        const name = encodeURIComponent(method.replaceAll("/", "~1"));
        types[method] = ajv.getSchema(`answers#/definitions/Answers/properties/${name}`);
    }
    return types;
}

const types = answerTypes();

function expectType(method, answer) {
    assert.ok(types[method], `${method}: no type to check its answer against`);
    assert.ok(types[method](answer), `${method}: ${JSON.stringify(types[method].errors)} in ` +
        JSON.stringify(answer).slice(0, 2000));
}

// What a client can do that takes all that the server has to offer.
const ABILITIES = {
    general: { positionEncodings: ["utf-16"] },
    workspace: {
        workspaceEdit: { documentChanges: true, changeAnnotationSupport: {} },
        diagnostics: { refreshSupport: true },
    },
    textDocument: {
        diagnostic: {},
        completion: { completionItem: { snippetSupport: true, documentationFormat: ["markdown"] } },
        definition: { linkSupport: true },
        documentSymbol: { hierarchicalDocumentSymbolSupport: true },
        hover: { contentFormat: ["markdown"] },
        rename: { prepareSupport: true },
    },
};

const running = new Set();

// A test that leaves no server running, also where it fails.
function session(name, body) {
    test(name, { timeout: 120000 }, async (t) => {
        try {
            await body(t);
        } finally {
            for (const server of running) server.kill();
        }
    });
}

function startServer() {
    const server = spawn(program, ["lsp"], { stdio: ["pipe", "pipe", "ignore"] });
    running.add(server);
    server.on("close", () => running.delete(server));
    server.stdin.on("error", () => {});  // of a server that has ended
    return server;
}

class Client {
    constructor() {
        this.process = startServer();
        this.status = new Promise((resolve) => this.process.on("exit", resolve));
        this.connection = lsp.createProtocolConnection(
            new lsp.StreamMessageReader(this.process.stdout),
            new lsp.StreamMessageWriter(this.process.stdin));
        this.published = [];
        this.waiting = [];
        this.refreshes = 0;
        this.connection.onNotification(lsp.PublishDiagnosticsNotification.method, (params) => {
            expectType(lsp.PublishDiagnosticsNotification.method, params);
            this.published.push(params);
            this.wake();
        });
        this.connection.onRequest(lsp.DiagnosticRefreshRequest.method, () => {
            this.refreshes++;
            this.wake();
            return null;
        });
        this.connection.listen();
    }

    async start(capabilities = ABILITIES, folder = null) {
        const workspaceFolders = folder && [{ uri: uriOf(folder), name: "models" }];
        const { capabilities: provided } = await this.ask("initialize",
            { processId: process.pid, rootUri: null, capabilities, workspaceFolders });
        this.tell("initialized", {});
        return provided;
    }

    async ask(method, ...params) {
        const answer = await this.connection.sendRequest(method, ...params);
        expectType(method, answer);
        return answer;
    }

    tell(method, params) {
        return this.connection.sendNotification(method, params);
    }

    open(uri, text, version = 1) {
        return this.tell("textDocument/didOpen",
            { textDocument: { uri, languageId: "orvex", version, text } });
    }

    change(uri, version, contentChanges) {
        return this.tell("textDocument/didChange",
            { textDocument: { uri, version }, contentChanges });
    }

    wake() {
        this.waiting = this.waiting.filter(([holds, resolve]) => !holds() || resolve());
    }

    // Waits until a condition holds that what the server sends can change.
    until(holds) {
        return new Promise((resolve) => {
            this.waiting.push([holds, resolve]);
            this.wake();
        });
    }

    async stop() {
        assert.strictEqual(await this.ask("shutdown"), null);
        await this.tell("exit");
        assert.strictEqual(await this.status, 0, "the status after shutdown and exit");
        this.connection.dispose();
    }
}

const framed = (text) => {
    const body = Buffer.isBuffer(text) ? text : Buffer.from(text);
    return Buffer.concat([Buffer.from(`Content-Length: ${body.length}\r\n\r\n`), body]);
};

const message = (fields) => framed(JSON.stringify({ jsonrpc: "2.0", ...fields }));

// Takes apart what a server has written.
function messagesIn(bytes) {
    const messages = [];
    while (bytes.length > 0) {
        const head = /^Content-Length: (\d+)\r\n\r\n/.exec(bytes.toString("latin1"));
        assert.ok(head, `not a message: ${bytes.toString("latin1", 0, 80)}`);
        const end = head[0].length + Number(head[1]);
        messages.push(JSON.parse(bytes.toString("utf8", head[0].length, end)));
        bytes = bytes.subarray(end);
    }
    return messages;
}

// Sends bytes, ends the input, and resolves to what the server wrote and its status.
function send(...parts) {
    const server = startServer();
    const written = [];
    server.stdout.on("data", (bytes) => written.push(bytes));
    server.stdin.end(Buffer.concat(parts));
    return new Promise((resolve) => server.on("close", (status) =>
        resolve({ status, messages: messagesIn(Buffer.concat(written)) })));
}

module.exports = { ABILITIES, Client, framed, lsp, message, program, root, send, session, uriOf };
