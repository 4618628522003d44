// What annotated models cannot show: the grammar on the examples and on the models of the message
// index, the problem matcher on lines of `orvex check --format short`, and what the editor takes for
// words and folds.
"use strict";

const assert = require("node:assert");
const fs = require("node:fs");
const path = require("node:path");
const oniguruma = require("vscode-oniguruma");
const textmate = require("vscode-textmate");

const editors = path.dirname(__dirname);
const root = path.dirname(editors);
const read = (...names) => fs.readFileSync(path.join(...names), "utf8");

// Of the examples: a piece of a line, a token of it, and the scope that it must have.
const EXPECTED = {
    closed: [
        ["$ONTEXT", "$ONTEXT", "source"],
        ["Manufactures", "! Manufactures", "comment.line.exclamation"],
        ["$PROD:Y", "S", "entity.other.attribute-name"],
        ["VA:", "VA", "entity.other.attribute-name.nest"],
        ["PW.FX = 1", "PW.FX = 1;", "source"],
    ],
    dynamic: [
        ["INV(T)$(ORD(T) GT 1)  !", "INV", "entity.name.variable"],
        ["O:PK(T+1)", "+", "keyword.operator.lead-lag"],
        ["K:IMAX(T)", "K", "entity.other.attribute-name"],
        ["D:PKL", '"T4"', "string.quoted.double"],
        ["$PEPS", "1.E-8", "constant.other.option"],
    ],
    regions: [
        ["$MODEL", "REGIONS", "entity.name.type.model"],
        ["I:PT#(RR)", "#", "keyword.operator.extra"],
        ["ESUB(RR)", "RR.TL", "entity.other.attribute-name.nest"],
        ["V:BUY", "BUY", "entity.name.variable"],
        ["V:BUY", "$", "keyword.operator.condition"],
        ["$OFFTEXT", "$OFFTEXT", "keyword.control.model"],
    ],
    taxes: [
        ["A:GOVT        N:TAU", "+", "keyword.operator.continuation"],
        ["$AUXILIARY", "$AUXILIARY", "storage.type.declaration"],
        ["$CONSTRAINT", "TAU", "entity.name.function"],
        ["=E= 1", ";", "punctuation.terminator.constraint"],
    ],
    three: [
        ["$MARKETS", "$MARKETS", "storage.type.declaration"],
        ["R:U", "-", "keyword.operator.arithmetic"],
        ["WAGE =G=", "=G=", "keyword.operator.relation"],
        ["$MODEL:TRADE", "TRADE", "entity.name.type.model"],
    ],
};

// Of the message index: the codes whose wrong model shows it by a scope `invalid`.
const SHOWN = [
    "index-parenthesis-missing", "index-quotes-invalid", "keyword-colon-missing", "keyword-unknown", "argument-quotes-invalid",
    "report-continued",
];

async function loadGrammar() {
    const engine = require.resolve("vscode-oniguruma/release/onig.wasm");
    await oniguruma.loadWASM(fs.readFileSync(engine).buffer);
    const file = path.join(editors, "textmate", "orvex.tmLanguage.json");
    return new textmate.Registry({
        onigLib: Promise.resolve({
            createOnigScanner: (patterns) => new oniguruma.OnigScanner(patterns),
            createOnigString: (text) => new oniguruma.OnigString(text),
        }),
        loadGrammar: async () => textmate.parseRawGrammar(read(file), file),
    }).loadGrammar("source.orvex");
}

// All tokens of a text: the line they stand in, their own text, their innermost scope.
function tokenize(grammar, text) {
    const tokens = [];
    let state = textmate.INITIAL;
    for (const line of text.split("\n")) {
        const result = grammar.tokenizeLine(line, state);
        state = result.ruleStack;
        for (const { startIndex, endIndex, scopes } of result.tokens) {
            const scope = scopes.at(-1).replace(/\.orvex$/, "");
            tokens.push({ line, text: line.slice(startIndex, endIndex), scope });
        }
    }
    return tokens;
}

const invalid = (tokens) => tokens.filter((token) => token.scope.startsWith("invalid"));

function checkExamples(grammar) {
    assert.deepStrictEqual(fs.readdirSync(path.join(root, "examples")).filter(
        (name) => fs.existsSync(path.join(root, "examples", name, "run.ctl"))),
        Object.keys(EXPECTED), "an example without rows here, or rows without an example");
    for (const [name, rows] of Object.entries(EXPECTED)) {
        const tokens = tokenize(grammar, read(root, "examples", name, `${name}.zlm`));
        assert.deepStrictEqual(invalid(tokens), [], name);
        for (const [piece, text, scope] of rows) {
            const found = tokens.find((token) => token.line.includes(piece) &&
                !token.line.startsWith("*") && token.text === text);
            assert.strictEqual(found?.scope, scope, `${name}: ${text} in ${piece}`);
        }
    }
}

function checkMessages(grammar) {
    const shown = new Set();
    let code, blocks = 0;
    const parts = /^## (.*)$|^```(wrong|corrected|model)\n([^]*?)^```$/gm;
    for (const [, heading, kind, text] of read(root, "docs", "messages.md").matchAll(parts)) {
        code = heading ?? code;
        if (heading !== undefined) continue;
        blocks++;
        const found = invalid(tokenize(grammar, text));
        if (kind === "wrong" && found.length > 0) shown.add(code);
        if (kind !== "wrong") assert.deepStrictEqual(found, [], `${code}, ${kind}`);
    }
    assert.ok(blocks > 50, "the models of docs/messages.md were not found");
    for (const code of SHOWN) assert.ok(shown.has(code), `${code}: its wrong model looks right`);
}

function checkProblemMatcher() {
    const { pattern } = JSON.parse(read(editors, "vscode", "tasks.json")).tasks[0].problemMatcher;
    const match = (line) => {
        const found = new RegExp(pattern.regexp).exec(line);
        return found && ["file", "line", "column", "severity", "message", "code"].map(
            (part) => found[pattern[part]]);
    };
    const rows = [
        ["m.zlm:7:4: error: `PX` is no set: see [1] [kind-mismatch]",
            ["m.zlm", "7", "4", "error", "`PX` is no set: see [1]", "kind-mismatch"]],
        ["a b/m:2.zlm:12:1: warning: the line is too long [line-too-long]",
            ["a b/m:2.zlm", "12", "1", "warning", "the line is too long", "line-too-long"]],
        ["m.zlm:7: error: no column [kind-mismatch]", null],
        ["2 errors in 1 file", null],
    ];
    for (const [line, parts] of rows) assert.deepStrictEqual(match(line), parts, line);
}

function checkLanguageConfiguration() {
    const file = read(editors, "vscode", "language-configuration.json");
    const { wordPattern, folding } = JSON.parse(file);
    const line = '    E:PK("T4")$K0(R)  Q:(-T0(RR,R+1)*2)  RR.TL:  ! Wage';
    assert.strictEqual(line.match(new RegExp(wordPattern, "g")).join(" "),
        "E PK T4 K0 R Q T0 RR R 1 2 RR TL Wage");
    const lines = ["$model: A", "$OFFTEXT", " $MODEL:A", "$PROD:X"];
    for (const [marker, matching] of [["start", 0], ["end", 1]]) {
        const found = lines.filter((line) => new RegExp(folding.markers[marker]).test(line));
        assert.deepStrictEqual(found, [lines[matching]], marker);
    }
}

loadGrammar().then((grammar) => {
    checkExamples(grammar);
    checkMessages(grammar);
    checkProblemMatcher();
    checkLanguageConfiguration();
    console.log("examples, message index, problem matcher and words: as expected");
}).catch((error) => {
    console.error(error.message);
    process.exit(1);
});
