// `orvex lsp` with the protocol's own client: what it answers, also to wrong requests. Each answer
// is checked against the types of the protocol's package.
"use strict";

const assert = require("node:assert");
const { spawnSync } = require("node:child_process");
const fs = require("node:fs");
const os = require("node:os");
const path = require("node:path");
const { ABILITIES, Client, framed, lsp, message, program, root, send, session, uriOf } =
    require("./client.js");

const ENCODINGS = ["utf-16", "utf-8", "utf-32"];
const inEncoding = (encoding) =>
    ({ ...ABILITIES, general: { positionEncodings: [encoding, "utf-16"] } });
// Without pulled findings: they are pushed.
const PUSHED = { ...ABILITIES, textDocument: { ...ABILITIES.textDocument, diagnostic: undefined } };

const PARSE = -32700, REQUEST = -32600, METHOD = -32601, PARAMS = -32602, EARLY = -32002;
const CANCELLED = -32800, FAILED = -32803;

const example = (name) => {
    const file = path.join(root, "examples", name, `${name}.zlm`);
    return { uri: uriOf(file), text: fs.readFileSync(file, "utf8") };
};
const EXAMPLES = ["closed", "dynamic", "regions", "taxes", "three"];
const CLOSED = example("closed");

const linesOf = (text) => text.split(/\r\n|\r|\n/);
const WHOLE = { start: { line: 0, character: 0 }, end: { line: 1e6, character: 0 } };

// The position of the mark `|` in a piece of a text.
function placeOf(text, piece) {
    const found = text.indexOf(piece.replace("|", ""));
    assert.ok(found >= 0, `${piece} is not in the text`);
    const lines = linesOf(text.slice(0, found + piece.indexOf("|")));
    return { line: lines.length - 1, character: lines.at(-1).length };
}

const unitsOf = (text, encoding) => encoding === "utf-8" ? Buffer.byteLength(text)
    : encoding === "utf-16" ? text.length : [...text].length;

// A position in an encoding, counted in UTF-16 as JavaScript does.
function inText(text, position, encoding) {
    const line = linesOf(text)[position.line];
    assert.ok(line !== undefined, `line ${position.line} is outside of the text`);
    // From the end, since half a letter counts as one in UTF-32.
    for (let end = line.length; end >= 0; end--) {
        if (unitsOf(line.slice(0, end), encoding) === position.character)
            return { line: position.line, character: end };
    }
    return assert.fail(`${JSON.stringify(position)} is not a place in "${line}" in ${encoding}`);
}

// An answer with all its positions counted in UTF-16.
const recounted = (text, answer, encoding) => JSON.parse(JSON.stringify(answer), (_, value) =>
    typeof value?.character === "number" ? inText(text, value, encoding) : value);

const wholeText = (text, range) => lsp.TextDocument.create("", "", 1, text).getText(range);

// The coloured tokens as texts with their types.
function coloured(text, { data }, encoding) {
    const tokens = [];
    let line = 0, character = 0;
    for (let at = 0; at < data.length; at += 5) {
        character = data[at] > 0 ? data[at + 1] : character + data[at + 1];
        line += data[at];
        const end = { line, character: character + data[at + 2] };
        const range = { start: { line, character }, end };
        const letters = wholeText(text, recounted(text, range, encoding));
        tokens.push([letters, line, ...data.slice(at + 3, at + 5)]);
    }
    return tokens;
}

const ABOUT_TEXTS = ["diagnostic", "documentSymbol", "foldingRange", "codeLens", "documentLink",
    "formatting"];
const ABOUT_RANGES = ["inlayHint", "codeAction", "rangeFormatting"];
const ABOUT_PLACES = ["hover", "completion", "signatureHelp", "declaration", "definition",
    "references", "documentHighlight", "prepareRename"];

// An answer, or the code of the error.
const answerOf = (client, method, params) =>
    client.ask(method, params).catch(({ code }) => code === undefined ? assert.fail() : code);

// The answers about a text as a whole, about names and labels in it, and about places outside.
async function allAnswers(client, { uri, text }, encoding) {
    const textDocument = { uri };
    const answers = {};
    const ask = async (name, params, key = name) => {
        const answer = await answerOf(client, `textDocument/${name}`, { textDocument, ...params });
        if (typeof answer === "number") assert.strictEqual(answer, FAILED, `${key}: an error`);
        answers[key] = recounted(text, answer, encoding);
    };
    for (const name of ABOUT_TEXTS) await ask(name, {});
    for (const name of ABOUT_RANGES)
        await ask(name, { range: WHOLE, context: { diagnostics: [] } });
    for (const kind of ["full", "range"]) {
        const tokens = await client.ask(`textDocument/semanticTokens/${kind}`,
            { textDocument, range: WHOLE });
        answers[`tokens ${kind}`] = coloured(text, tokens, encoding);
    }
    const context = { includeDeclaration: true };
    for (const [number, line] of linesOf(text).entries()) {
        for (const { index } of line.matchAll(/[$\p{L}\d]+/gu)) {
            const character = unitsOf(line.slice(0, index), encoding);
            const position = { line: number, character };
            const at = `${number}:${index}`;
            for (const name of ABOUT_PLACES) await ask(name, { position, context }, `${name} ${at}`);
            await ask("selectionRange", { positions: [position] }, `selectionRange ${at}`);
        }
    }
    const far = [{ line: 1e6, character: 0 }, { line: 3, character: 1e6 }];
    for (const position of far) for (const name of ABOUT_PLACES) await ask(name, { position, context });
    return answers;
}

// Answers that are something, by request.
function answered(answers) {
    const counts = {};
    for (const [key, answer] of Object.entries(answers)) {
        const isSomething = answer !== null && answer !== FAILED && answer.length !== 0 &&
            answer.items?.length !== 0;
        if (isSomething) counts[key.split(" ")[0]] = (counts[key.split(" ")[0]] ?? 0) + 1;
    }
    return counts;
}

session("all requests on all examples", async () => {
    for (const name of EXAMPLES) {
        const client = new Client();
        await client.start();
        const opened = example(name);
        client.open(opened.uri, opened.text);
        const answers = await allAnswers(client, opened, "utf-16");
        const counts = answered(answers);
        for (const kind of [...ABOUT_PLACES.filter((kind) => kind !== "signatureHelp"),
            "documentSymbol", "foldingRange", "codeLens", "documentLink", "selectionRange", "tokens"])
            assert.ok(counts[kind] > 0, `${name}: ${kind} never answers`);
        assert.deepStrictEqual(answers.diagnostic.items, [], name);
        assert.deepStrictEqual(answers["tokens full"], answers["tokens range"], name);
        await client.stop();
    }
});

// Letters of one to four bytes, some of them before names and labels, and all three line ends.
function withLetters(text) {
    let count = 0;
    return text.replaceAll('"north"', '"nö𝄞rth"').replace(/!.*/g, "$& – Größe 𝄞")
        .replace(/\n/g, (end) => ["\n", "\r\n", "\r"][count++ % 3]);
}

session("the same places in all encodings", async () => {
    const opened = example("regions");
    opened.text = withLetters(opened.text);
    const found = [];
    for (const encoding of ENCODINGS) {
        const client = new Client();
        const provided = await client.start(inEncoding(encoding));
        assert.strictEqual(provided.positionEncoding, encoding);
        client.open(opened.uri, opened.text);
        found.push(await allAnswers(client, opened, encoding));
        await client.stop();
    }
    for (const other of found.slice(1)) {
        for (const [key, answer] of Object.entries(found[0])) {
            // The place of a completion is kept in bytes.
            assert.deepStrictEqual(other[key], answer, key);
        }
    }
    const { line, character } = placeOf(opened.text, '"nö𝄞rth")         Q:|B0');
    const hover = found[0][`hover ${line}:${character}`];
    assert.strictEqual(wholeText(opened.text, hover.range), "B0");
});

// Where the answer is worked out by hand: a place in CLOSED, what is asked there, what must hold.
const at = (piece, params = {}) => ({ position: placeOf(CLOSED.text, piece), ...params });
const PL = "I:P|L  Q:40";
const textsAt = (ranges) => ranges.map((range) =>
    `${range.start.line + 1} ${wholeText(CLOSED.text, range)}`);
const EVERY_PL = ["34 PL", "47 PL", "53 PL", "65 PL", "79 PL"];  // the last in the host's text
const HOST = "79 PL";

const ANSWERS = [
    ["hover", at(PL), ({ contents, range }) => {
        assert.deepStrictEqual(textsAt([range]), ["47 PL"]);
        for (const part of ["commodity", "Wage", "line 34", "input"])
            assert.ok(contents.value.includes(part), `${part}: ${contents.value}`);
    }],
    ["definition", at(PL), (links) =>
        assert.deepStrictEqual(textsAt(links.map((link) => link.targetSelectionRange)), ["34 PL"])],
    ["declaration", at(PL), (places) =>
        assert.deepStrictEqual(textsAt(places.map((place) => place.range)), ["34 PL"])],
    ["references", at(PL, { context: { includeDeclaration: true } }), (places) =>
        assert.deepStrictEqual(textsAt(places.map((place) => place.range)), EVERY_PL)],
    ["references", at(PL, { context: { includeDeclaration: false } }), (places) =>
        assert.deepStrictEqual(textsAt(places.map((place) => place.range)), EVERY_PL.slice(1))],
    ["documentHighlight", at(PL), (places) =>
        assert.deepStrictEqual(textsAt(places.map((place) => place.range)), EVERY_PL)],
    ["prepareRename", at(PL), ({ placeholder }) => assert.strictEqual(placeholder, "PL")],
    ["rename", at(PL, { newName: "WAGE" }), ({ documentChanges, changeAnnotations }) => {
        const [{ textDocument, edits }] = documentChanges;
        assert.deepStrictEqual(textDocument, { uri: CLOSED.uri, version: 1 });
        assert.deepStrictEqual(textsAt(edits.map((edit) => edit.range)), EVERY_PL);
        const asked = edits.filter((edit) => edit.annotationId !== undefined);
        assert.deepStrictEqual(textsAt(asked.map((edit) => edit.range)), [HOST]);
        assert.ok(changeAnnotations[asked[0].annotationId].needsConfirmation);
    }],
    ["rename", at(PL, { newName: "PK" }), FAILED],
    ["rename", at(PL, { newName: "A B" }), FAILED],
    ["rename", at("|S:ESUB", { newName: "ZZ" }), FAILED],
    ["prepareRename", at("|Q:40"), FAILED],
    ["completion", at("|PL  Q:40"), ({ items }) =>
        assert.deepStrictEqual(items.map((item) => item.label).sort(), ["PK", "PL", "PW", "PX", "PY"])],
    ["documentSymbol", {}, ([model]) => {
        assert.strictEqual(model.name, "CLOSED");
        const names = model.children.find((block) => block.name.startsWith("$COMM")).children;
        assert.deepStrictEqual(names.map((name) => name.name), ["PX", "PY", "PW", "PL", "PK"]);
    }],
    ["foldingRange", {}, (folds) => {
        const spans = folds.map((fold) => `${fold.startLine + 1}-${fold.endLine + 1} ${fold.kind}`);
        for (const span of ["1-13 comment", "21-68 region", "44-48 region"])
            assert.ok(spans.includes(span), `${span}: ${spans}`);
    }],
    ["selectionRange", { positions: [placeOf(CLOSED.text, PL)] }, ([inner]) => {
        assert.deepStrictEqual(textsAt([inner.range]), ["47 PL"]);
        const starts = [];
        for (let part = inner; part; part = part.parent) starts.push(part.range.start.line);
        assert.deepStrictEqual(starts, [...starts].sort((a, b) => b - a));
        assert.ok(starts.includes(43) && starts.includes(20), `block and model: ${starts}`);
    }],
    ["codeLens", {}, (lenses) => {
        const of = (place) => lenses.find((lens) => textsAt([lens.range])[0] === place).command.title;
        assert.strictEqual(of("31 PX"), "made by 1, used by 2");
        assert.strictEqual(of("34 PL"), "owned by 1, used by 2");
    }],
    ["documentLink", {}, (links) => assert.deepStrictEqual(links.map((link) =>
        path.basename(link.target)), ["CLOSED.HDR", "CLOSED.GEN"])],
];

session("answers about CLOSED", async (t) => {
    const client = new Client();
    await client.start();
    client.open(CLOSED.uri, CLOSED.text);
    const textDocument = { uri: CLOSED.uri };
    for (const [name, params, check] of ANSWERS) {
        await t.test(`${name} ${JSON.stringify(params)}`, async () => {
            const answer = await answerOf(client, `textDocument/${name}`, { textDocument, ...params });
            if (check === FAILED) assert.strictEqual(answer, FAILED);
            else check(answer);
        });
    }
    const symbols = await client.ask("workspace/symbol", { query: "HOUSE" });
    assert.deepStrictEqual(textsAt(symbols.map((symbol) => symbol.location.range)), ["38 HOUSE"]);
    const { items } = await client.ask("textDocument/completion",
        { textDocument, ...at("|PL  Q:40") });
    const wage = await client.ask("completionItem/resolve", items.find((item) => item.label === "PL"));
    assert.ok(wage.documentation.value.includes("Wage"));
    const entry = await client.ask("orvex/explain", { code: "name-unused" });
    assert.ok(entry.value.startsWith("## name-unused"));
    await client.stop();
});

session("signature help counts the arguments", async () => {
    const { uri, text } = example("regions");
    const client = new Client();
    await client.start();
    client.open(uri, text);
    for (const [piece, argument] of [["Q:X0(|RR,R)", 0], ["Q:X0(RR,|R)", 1]]) {
        const help = await client.ask("textDocument/signatureHelp",
            { textDocument: { uri }, position: placeOf(text, piece) });
        assert.strictEqual(help.activeParameter, argument, piece);
        assert.ok(help.signatures[0].label.startsWith("X0("), piece);
    }
    await client.stop();
});

session("typing: completion offers keywords, colours change by parts", async () => {
    const textDocument = { uri: CLOSED.uri };
    const client = new Client();
    await client.start();
    client.open(CLOSED.uri, CLOSED.text);
    const before = await client.ask("textDocument/semanticTokens/full", { textDocument });
    const start = placeOf(CLOSED.text, "|$PROD:W");
    const end = { line: start.line, character: 1 };
    client.change(CLOSED.uri, 2, [{ range: { start, end: start }, text: "$" },
        { range: { start: end, end }, text: "\n" }]);
    const delta = await client.ask("textDocument/semanticTokens/full/delta",
        { textDocument, previousResultId: before.resultId });
    const after = await client.ask("textDocument/semanticTokens/full", { textDocument });
    assert.ok(delta.edits.length > 0, "the colours have changed");
    for (const { start, deleteCount, data } of [...delta.edits].reverse())
        before.data.splice(start, deleteCount, ...data);
    assert.deepStrictEqual(before.data, after.data);

    const { items } = await client.ask("textDocument/completion", { textDocument, position: end });
    const texts = items.map(({ filterText }) => filterText);
    for (const keyword of ["$PROD:", "$DEMAND:", "$REPORT:", "$OFFTEXT"])
        assert.ok(texts.includes(keyword), `${keyword}: ${texts}`);
    await client.stop();
});

// A number below a limit, the same ones in each run.
function numbers(seed) {
    return (limit) => {
        seed = (Math.imul(seed, 1103515245) + 12345) >>> 0;
        return Math.floor(seed / 65536) % limit;
    };
}

// An edit at a random place: some text goes, some comes.
const PIECES =
    ["", "\n", "\r", "\r\n", "$PROD:X  ", "é", "𝄞", "  I:PL Q:(", "! ", '"', "$OFFTEXT\n"];
function randomChange(text, below) {
    const document = lsp.TextDocument.create("", "", 1, text);
    const places = [below(text.length), below(text.length)].sort((a, b) => a - b);
    places[1] = Math.min(places[1], places[0] + below(8));
    // Not within a letter or a line end, which are no positions.
    const isSplit = (at) => /^(\r\n|[\ud800-\udbff][\udc00-\udfff])$/.test(text.slice(at - 1, at + 1));
    const [begin, end] = places.map((place) => isSplit(place) ? place - 1 : place);
    const change = { range: { start: document.positionAt(begin), end: document.positionAt(end) },
        text: PIECES[below(PIECES.length)] };
    return [change, text.slice(0, begin) + change.text + text.slice(end)];
}

session("a text that is edited is the same as one that is opened", async () => {
    const client = new Client();
    await client.start();
    const below = numbers(1), uri = "file:///edited.zlm", other = "file:///opened.zlm";
    let text = CLOSED.text.replace(/!/g, "! 𝄞é");
    client.open(uri, text, 0);
    for (let version = 1; version <= 300; version++) {
        const changes = [];
        for (let count = 1 + below(3); count > 0; count--) {
            let change;
            [change, text] = randomChange(text, below);
            changes.push(change);
        }
        client.change(uri, version, changes);
        client.open(other, text);
        const asked = ["foldingRange", "diagnostic", "semanticTokens/full"].map((name) =>
            [uri, other].map((uri) => client.ask(`textDocument/${name}`, { textDocument: { uri } })));
        for (const pair of asked) {
            const [mine, fresh] = (await Promise.all(pair)).map((answer) =>
                answer.data ?? answer.items?.map(({ range, code }) => [range, code]) ?? answer);
            assert.deepStrictEqual(mine, fresh, `version ${version}`);
        }
        client.tell("textDocument/didClose", { textDocument: { uri: other } });
    }
    await client.stop();
});

// The wrong and the right models of the message index.
function indexModels() {
    const models = [];
    const index = fs.readFileSync(path.join(root, "docs", "messages.md"), "utf8");
    for (const [, text] of index.matchAll(/^```(?:wrong|corrected|model)\n([^]*?)^```$/gm))
        models.push(text);
    assert.ok(models.length > 100, "the models of docs/messages.md were not found");
    return models;
}

// What `orvex check` finds in the files of a folder: by path, severity, code and bytes.
function checkedIn(folder, texts) {
    const args = ["check", "--format", "json", "--max-errors", "0", folder];
    const { stdout } = spawnSync(program, args, { encoding: "utf8", maxBuffer: 1e8 });
    const found = {};
    for (const line of stdout.trim().split("\n")) {
        const { type, severity, code, spans } = JSON.parse(line);
        if (type !== "finding") continue;
        const place = spans.find((span) => span.primary);
        // The file as a whole is shown as its first line.
        const end = place.text === "" ? texts[place.path].search(/[\r\n]|$/) : place.byte_end;
        (found[place.path] ??= []).push([severity, code, place.byte_start, end].join(" "));
    }
    return found;
}

session("pushed findings are those of orvex check, also after an edit", async () => {
    const folder = fs.mkdtempSync(path.join(os.tmpdir(), "orvex-"));
    const client = new Client();
    await client.start(PUSHED, folder);
    const texts = {};
    for (const [number, text] of indexModels().entries()) {
        const file = path.join(folder, `${number}.zlm`);
        fs.writeFileSync(file, text);
        texts[file] = text;
        client.open(uriOf(file), "", 1);
        client.change(uriOf(file), 2, [{ text: `* ${text}` }, { text }]);
    }
    const latest = (file) => client.published.filter(({ uri, version }) =>
        uri === uriOf(file) && version === 2);
    // Those of the tree come first, those of the translator after it.
    await client.until(() => Object.keys(texts).every((file) => latest(file).length === 2));
    const found = checkedIn(folder, texts);
    for (const [file, text] of Object.entries(texts)) {
        const document = lsp.TextDocument.create(uriOf(file), "orvex", 1, text);
        const bytes = (position) =>
            Buffer.byteLength(text.slice(0, document.offsetAt(position)));
        const mine = latest(file).at(-1).diagnostics.map(({ range, severity, code }) =>
            [["error", "warning", "note"][severity - 1], code, bytes(range.start), bytes(range.end)]
                .join(" "));
        assert.deepStrictEqual(mine.sort(), (found[file] ?? []).sort(), text);
    }
    fs.rmSync(folder, { recursive: true });
    await client.stop();
});

session("texts, ranges and lines are laid out, and nothing in a model with an error", async () => {
    const client = new Client();
    await client.start();
    const uri = CLOSED.uri;
    const given = CLOSED.text.replace("  X  !", "X!").replace("O:PX  Q:120\n  I:PY  Q:20",
        "o:px Q:120\nI:PY Q:20").replace("  I:PL  Q:50", " I:PL  Q: 50");
    const formatted = async (text, name, params) => {
        client.open(uri, text, 1);
        const options = { tabSize: 4, insertSpaces: true };
        const edits = await client.ask(`textDocument/${name}`,
            { textDocument: { uri }, options, ...params });
        client.tell("textDocument/didClose", { textDocument: { uri } });
        return lsp.TextDocument.applyEdits(lsp.TextDocument.create(uri, "orvex", 1, text), edits);
    };
    assert.strictEqual(await formatted(given, "formatting", {}), CLOSED.text);
    const of = (piece) => ({ start: placeOf(given, piece), end: placeOf(given, piece) });
    // The whole run of entries around the range.
    assert.strictEqual(await formatted(given, "rangeFormatting", { range: of("I:PY Q|:20") }),
        CLOSED.text.replace("  X  !", "X!").replace("  I:PL  Q:50", " I:PL  Q: 50"));
    // The blanks of the line before the one that was just begun.
    const left = { position: placeOf(given, "|I:PY Q:20"), ch: "\n" };
    assert.strictEqual(await formatted(given, "onTypeFormatting", left),
        given.replace("o:px Q:120", "o:px  Q:120"));
    const wrong = given.replace("$SECTORS:", "$SECTORS");
    for (const [name, params] of [["formatting", {}], ["onTypeFormatting", left],
        ["rangeFormatting", { range: WHOLE }]])
        assert.strictEqual(await formatted(wrong, name, params), wrong);
    await client.stop();
});

session("fixes correct the text, and commands write next to it", async () => {
    const folder = fs.mkdtempSync(path.join(os.tmpdir(), "orvex-"));
    const uri = uriOf(path.join(folder, "closed.zlm"));
    const client = new Client();
    await client.start(ABILITIES, folder);
    const wrong = CLOSED.text.replace("$SECTORS:", "$SECTORS");
    client.open(uri, wrong, 1);
    const textDocument = { uri };
    const about = { textDocument, range: WHOLE, context: { diagnostics: [] } };
    const actions = await client.ask("textDocument/codeAction", about);
    assert.deepStrictEqual(actions.map(({ kind }) => kind), ["quickfix", "source.fixAll.orvex"]);
    const document = lsp.TextDocument.create(uri, "orvex", 1, wrong);
    for (const { edit } of actions) {
        const edits = edit.documentChanges?.[0].edits ?? edit.changes[uri];
        assert.strictEqual(lsp.TextDocument.applyEdits(document, edits), CLOSED.text);
    }
    const run = (command) => client.ask("workspace/executeCommand", { command, arguments: [uri] });
    await assert.rejects(run("orvex.translate"), { code: FAILED });
    client.change(uri, 2, [{ text: CLOSED.text }]);
    const names = async (command) => (await run(command)).map((file) => path.basename(file));
    assert.deepStrictEqual(await names("orvex.translate"), ["CLOSED.GEN", "CLOSED.HDR"]);
    const written = fs.readFileSync(path.join(folder, "CLOSED.HDR"), "utf8");
    assert.ok(written.endsWith("\nCLOSED.INTEGER1=1;\n"));
    assert.deepStrictEqual(await names("orvex.picture"), ["CLOSED.svg"]);
    assert.match(fs.readFileSync(path.join(folder, "CLOSED.svg"), "utf8"), /<svg[^]*<\/svg>/);
    fs.rmSync(folder, { recursive: true });
    await client.stop();
});

session("1,000 edits at once: the findings of the last version come last, and are its own", async () => {
    const client = new Client();
    await client.start(PUSHED);
    client.open(CLOSED.uri, CLOSED.text, 1);
    const start = placeOf(CLOSED.text, "$P|ROD:W");
    const range = { start: placeOf(CLOSED.text, "$|PROD:W"), end: start };
    for (let version = 2; version <= 1001; version++)
        client.change(CLOSED.uri, version, [{ range, text: version % 2 === 0 ? "P" : "Q" }]);
    const judged = () => client.published.filter(({ version }) => version === 1001).length === 2;
    await client.until(judged);
    const versions = client.published.map(({ version }) => version);
    assert.deepStrictEqual(versions, [...versions].sort((a, b) => a - b), "an older version came later");
    for (const { version, diagnostics } of client.published) {
        const codes = new Set(diagnostics.map(({ code }) => code));
        assert.strictEqual(codes.has("keyword-unknown"), version > 1 && version % 2 === 1, `${version}`);
    }
    client.tell("textDocument/didClose", { textDocument: { uri: CLOSED.uri } });
    await client.until(() => client.published.at(-1).diagnostics.length === 0);
    await client.stop();
    assert.strictEqual(versions.length, client.published.length - 1, "findings after the last");
});

session("pulled findings: those of the tree, then those of the translator, then no change", async () => {
    const wrong = CLOSED.text.replace("$PROD:W", "$PORD:W");
    const textDocument = { uri: CLOSED.uri };
    const client = new Client();
    const provided = await client.start();
    assert.ok(provided.diagnosticProvider.workspaceDiagnostics);
    client.open(CLOSED.uri, wrong);
    const first = await client.ask("textDocument/diagnostic", { textDocument });
    assert.strictEqual(first.items[0].code, "keyword-unknown");
    await client.until(() => client.refreshes > 0);
    const second = await client.ask("textDocument/diagnostic",
        { textDocument, previousResultId: first.resultId });
    assert.strictEqual(second.kind, "full");
    const third = await client.ask("textDocument/diagnostic",
        { textDocument, previousResultId: second.resultId });
    assert.strictEqual(third.kind, "unchanged");
    assert.deepStrictEqual(client.published, [], "nothing is pushed to a client that pulls");
    await client.stop();
});

session("the models of the folder, also with bytes that are not UTF-8", async () => {
    const folder = fs.mkdtempSync(path.join(os.tmpdir(), "orvex "));
    const bytes = Buffer.from(CLOSED.text.replace("! Wage", "! L\u00f6hne").replace("I:PL  Q:40",
        "I:PL  Q:40 ! \u00f6\u00fc").replace("$PROD:W", "$PORD:W"), "latin1");
    fs.writeFileSync(path.join(folder, "\u00e4.zlm"), bytes);
    fs.writeFileSync(path.join(folder, "other.txt"), "$MODEL:A\n");
    const client = new Client();
    await client.start(ABILITIES, folder);
    const { items } = await client.ask("workspace/diagnostic", { previousResultIds: [] });
    assert.deepStrictEqual(items.map(({ uri }) => uri), [uriOf(path.join(folder, "\u00e4.zlm"))]);
    const { line } = placeOf(CLOSED.text, "|$PROD:W");
    assert.deepStrictEqual(items[0].items[0].range,
        { start: { line, character: 0 }, end: { line, character: 5 } });
    const known = items.map(({ uri, resultId }) => ({ uri, value: resultId }));
    const again = await client.ask("workspace/diagnostic", { previousResultIds: known });
    assert.strictEqual(again.items[0].kind, "unchanged");
    const symbols = await client.ask("workspace/symbol", { query: "PL" });
    assert.deepStrictEqual(symbols.map(({ location }) => location.range.start.line), [33]);
    await client.stop();
    fs.rmSync(folder, { recursive: true });
});

session("a CR alone ends a line for positions", async () => {
    const client = new Client();
    await client.start();
    client.open("file:///cr.zlm", "* a\r* b\r\n$MODEL:M\n$PORD:X\n$OFFTEXT\n");
    const { items } = await client.ask("textDocument/diagnostic",
        { textDocument: { uri: "file:///cr.zlm" } });
    const start = items.find(({ code }) => code === "keyword-unknown").range.start;
    assert.deepStrictEqual(start, { line: 3, character: 0 });
    await client.stop();
});

// Answers to bytes: each row is what is sent after `initialize`, and the codes of the errors that
// come back, in their order. The server answers `alive` after all of them.
const OPEN = message({ method: "textDocument/didOpen", params: { textDocument:
    { uri: "file:///m.zlm", languageId: "orvex", version: 1, text: CLOSED.text } } });
const ask = (method, params, id = 7) => message({ id, method, params });
const textDocument = { uri: "file:///m.zlm" };
const hover = (position) => ask("textDocument/hover", { textDocument, position });

const REFUSED = [
    ["broken JSON", [framed("{\"jsonrpc\":")], [PARSE]],
    ["bytes that are not UTF-8", [framed(Buffer.from([0x22, 0xff, 0x22]))], [PARSE]],
    ["half a letter", [framed('{"jsonrpc":"2.0","id":7,"method":"\\ud800"}')], [PARSE]],
    ["an empty message", [framed("")], [PARSE]],
    ["a list", [framed("[]")], [REQUEST]],
    ["another version", [framed('{"jsonrpc":"1.0","id":7,"method":"x"}')], [REQUEST]],
    ["no method", [framed('{"jsonrpc":"2.0","id":7}')], [REQUEST]],
    ["a method that is a number", [framed('{"jsonrpc":"2.0","id":7,"method":1}')], [REQUEST]],
    ["parameters that are a text", [ask("textDocument/hover", "x")], [REQUEST]],
    ["an unknown request", [ask("textDocument/nothing", {})], [METHOD]],
    ["an unknown notification", [message({ method: "$/nothing", params: {} })], []],
    ["a notification as a request", [ask("textDocument/didOpen", {})], [METHOD]],
    ["a request as a notification", [message({ method: "textDocument/hover", params: {} })], []],
    ["no parameters", [ask("textDocument/hover")], [PARAMS]],
    ["a list of parameters", [ask("textDocument/hover", [])], [PARAMS]],
    ["no position", [ask("textDocument/hover", { textDocument })], [PARAMS]],
    ["a position of texts", [hover({ line: "1", character: "1" })], [PARAMS]],
    ["a position that is null", [hover(null)], [PARAMS]],
    ["a text that is not open", [ask("textDocument/hover",
        { textDocument: { uri: "file:///no.zlm" }, position: { line: 0, character: 0 } })], [PARAMS]],
    ["a range that ends before it begins", [ask("textDocument/inlayHint", { textDocument,
        range: { start: { line: 9, character: 0 }, end: { line: 2, character: 0 } } })], [PARAMS]],
    ["an item that is not the server's", [ask("completionItem/resolve", { label: "x" })], [PARAMS]],
    ["an unknown code", [ask("orvex/explain", { code: "x" })], [PARAMS]],
    ["a change of a text that is not open", [message({ method: "textDocument/didChange",
        params: { textDocument: { uri: "file:///no.zlm", version: 2 }, contentChanges: [] } })], []],
    ["a second initialize", [ask("initialize", { capabilities: {} })], [REQUEST]],
    ["a head without a length", [Buffer.from("Content-Type: x\r\n\r\n{}")], [PARSE]],
    ["a length that is not a number", [Buffer.from("Content-Length: x\r\n\r\n")], [PARSE]],
    ["a length below nothing", [Buffer.from("Content-Length: -5\r\n\r\n")], [PARSE]],
    ["a length beyond all memory", [Buffer.from(`Content-Length: ${"9".repeat(20)}\r\n\r\n`)],
        [PARSE]],
    ["small letters and a second field in the head",
        [Buffer.from('content-length: 2\r\ncontent-type: x\r\n\r\n[]')], [REQUEST]],
    ["an answer to nothing", [framed('{"jsonrpc":"2.0","id":99,"result":null}')], []],
    ["a cancel of nothing", [message({ method: "$/cancelRequest", params: { id: 99 } })], []],
    ["a request that is cancelled", [hover({ line: 0, character: 0 }),
        message({ method: "$/cancelRequest", params: { id: 7 } })], [CANCELLED]],
];

const START = message({ id: 1, method: "initialize", params: { processId: null, rootUri: null,
    capabilities: { textDocument: { diagnostic: {} } } } });
const END = [message({ id: 9, method: "shutdown" }), message({ method: "exit" })];

const errorsIn = (messages) =>
    messages.filter(({ error }) => error).map(({ error }) => error.code);

session("a request that fails is an error, and the server lives on", async (t) => {
    for (const [name, parts, codes] of REFUSED) {
        await t.test(name, async () => {
            const alive = ask("orvex/explain", { code: "name-unused" }, "alive");
            const { status, messages } = await send(START, OPEN, ...parts, alive, ...END);
            assert.deepStrictEqual(errorsIn(messages), codes);
            for (const { error } of messages) assert.notStrictEqual(error?.message, "");
            assert.ok(messages.find(({ id }) => id === "alive").result.value, "no answer after it");
            assert.strictEqual(status, 0);
        });
    }
});

session("the session's beginning and end", async (t) => {
    const rows = [
        ["shutdown and exit", [START, ...END], 0, []],
        ["exit without shutdown", [START, END[1]], 1, []],
        ["the end of the input without shutdown", [START], 1, []],
        ["the end of the input after shutdown", [START, END[0]], 0, []],
        ["no input", [], 1, []],
        ["the end within a message", [START, START.subarray(0, 30)], 1, []],
        ["a request before initialize", [ask("textDocument/hover", {}), START, ...END], 0, [EARLY]],
        ["a request after shutdown", [START, END[0], hover({ line: 0, character: 0 }), END[1]], 0,
            [REQUEST]],
        ["exit before initialize", [END[1]], 1, []],
    ];
    for (const [name, parts, expected, codes] of rows) {
        await t.test(name, async () => {
            const { status, messages } = await send(...parts);
            assert.strictEqual(status, expected);
            assert.deepStrictEqual(errorsIn(messages), codes);
        });
    }
});

session("a message in many pieces is one message", async () => {
    const client = new Client();
    client.connection.dispose();
    const written = [];
    client.process.stdout.on("data", (bytes) => written.push(bytes));
    for (const byte of Buffer.concat([START, ...END])) {
        client.process.stdin.write(Buffer.of(byte));
        await new Promise(setImmediate);
    }
    assert.strictEqual(await client.status, 0);
    assert.ok(Buffer.concat(written).toString().includes('"capabilities"'));
});

session("a client that dies ends the server", async () => {
    const client = new Client();
    await client.start();
    await client.open(CLOSED.uri, CLOSED.text);
    client.connection.dispose();
    client.process.stdout.destroy();
    client.process.stdin.write(hover({ line: 0, character: 0 }));
    assert.strictEqual(await client.status, 1, "the status");
});
