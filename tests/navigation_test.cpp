// The language server's answers when a client wants to go to a name or rename it.
#include "frontend/server/server.h"
#include "harness.h"

#include <gtest/gtest.h>
#include <map>
#include <string>
#include <vector>

using namespace orvex::frontend;
using std::string;

namespace {

const string uri = "file:///m.zlm";

// A client, and a server that has one text open.
class Session {
  public:
    Session(const string& abilities, const string& text, const Json& folders = Json::array()) {
        server_.send = [this](const Json& message) { answer_ = message; };
        server_.log = [](std::string_view) {};
        ask("initialize",
            {{"capabilities", Json::parse(abilities)}, {"workspaceFolders", folders}});
        tell("textDocument/didOpen",
             {{"textDocument",
               {{"uri", uri}, {"languageId", "orvex"}, {"version", 3}, {"text", text}}}});
    }

    // The result, or the error.
    Json ask(const string& method, const Json& params) {
        Json message = notification(method, params);
        message["id"] = 1;
        take_message(server_, message.dump());
        work_on_message(server_);
        return answer_.contains("result") ? answer_["result"] : answer_["error"];
    }

    void tell(const string& method, const Json& params) {
        take_message(server_, notification(method, params).dump());
        work_on_message(server_);
    }

  private:
    Options options_;
    Server server_{options_, {}, {}};
    Json answer_;
};

const string model =
    "A.L = 1;\n"
    "$MODEL:M\n"
    "$SECTORS:\n"
    " A  ! Text\n"
    "$PROD:A\n"
    " O:P  Q:K\n";

// A place as in the protocol, on one line of the text.
string range(int line, int begin, int end) {
    const auto position = [line](int column) {
        return R"({"character":)" + std::to_string(column) + R"(,"line":)" + std::to_string(line) +
               "}";
    };
    return R"({"end":)" + position(end) + R"(,"start":)" + position(begin) + "}";
}

string location(int line, int begin, int end) {
    return R"({"range":)" + range(line, begin, end) + R"(,"uri":")" + uri + R"("})";
}

TEST(Navigation, AnswersAsTheClientCanRead) {
    const string text = R"("textDocument":{"uri":"file:///m.zlm"})";
    const string at = "{" + text + R"(,"position":{"line":4,"character":6})";
    const string nowhere = "{" + text + R"(,"position":{"line":4,"character":1}})";
    const string links = R"({"textDocument":{"definition":{"linkSupport":true}}})";
    const string nested =
        R"({"textDocument":{"documentSymbol":{"hierarchicalDocumentSymbolSupport":true}}})";
    const string versions = R"("documentChanges":true)";
    const auto edits = [](const string& of_host) {
        return "[" + of_host + R"({"newText":"B","range":)" + range(3, 1, 2) +
               R"(},{"newText":"B","range":)" + range(4, 6, 7) + "}]";
    };
    const string document = R"("textDocument":{"uri":"file:///m.zlm","version":3})";
    struct Row {
        string abilities;
        string method;
        string params;
        string result;
    };
    const Row rows[] = {
        {"{}", "definition", at + "}", "[" + location(3, 1, 2) + "]"},
        {"{}", "declaration", at + "}", "[" + location(3, 1, 2) + "]"},
        {"{}", "definition", nowhere, "[]"},
        {"{}", "declaration", nowhere, "[]"},
        {links, "definition", at + "}",
         R"([{"originSelectionRange":)" + range(4, 6, 7) + R"(,"targetRange":)" + range(3, 1, 2) +
             R"(,"targetSelectionRange":)" + range(3, 1, 2) + R"(,"targetUri":"file:///m.zlm"}])"},
        {"{}", "references", at + R"(,"context":{"includeDeclaration":true}})",
         "[" + location(0, 0, 1) + "," + location(3, 1, 2) + "," + location(4, 6, 7) + "]"},
        {"{}", "references", at + R"(,"context":{"includeDeclaration":false}})",
         "[" + location(0, 0, 1) + "," + location(4, 6, 7) + "]"},
        {"{}", "documentHighlight", at + "}",
         R"([{"kind":1,"range":)" + range(0, 0, 1) + R"(},{"kind":3,"range":)" + range(3, 1, 2) +
             R"(},{"kind":3,"range":)" + range(4, 6, 7) + "}]"},
        {"{}", "documentHighlight", "{" + text + R"(,"position":{"line":5,"character":8}})",
         R"([{"kind":2,"range":)" + range(5, 8, 9) + "}]"},
        {"{}", "documentSymbol", "{" + text + "}",
         R"([{"kind":2,"location":)" + location(1, 7, 8) +
             R"(,"name":"M"},{"containerName":"M","kind":3,"location":)" + location(2, 0, 9) +
             R"(,"name":"$SECTORS"},{"containerName":"$SECTORS","kind":12,"location":)" +
             location(3, 1, 2) + R"(,"name":"A"},{"containerName":"M","kind":12,"location":)" +
             location(4, 0, 7) + R"(,"name":"$PROD:A"}])"},
        {nested, "documentSymbol", "{" + text + "}",
         R"([{"children":[{"children":[{"detail":"Text","kind":12,"name":"A","range":)" +
             range(3, 1, 2) + R"(,"selectionRange":)" + range(3, 1, 2) +
             R"(}],"kind":3,"name":"$SECTORS","range":{"end":{"character":10,"line":3},)"
             R"("start":{"character":0,"line":2}},"selectionRange":)" +
             range(2, 0, 9) +
             R"(},{"kind":12,"name":"$PROD:A","range":{"end":{"character":9,"line":5},)"
             R"("start":{"character":0,"line":4}},"selectionRange":)" +
             range(4, 0, 7) + R"(}],"kind":2,"name":"M","range":{"end":{"character":9,"line":5},)" +
             R"("start":{"character":0,"line":1}},"selectionRange":)" + range(1, 7, 8) + "}]"},
        // Lines and characters from the token before, length, type, and whether it is declared.
        {"{}", "semanticTokens/full", "{" + text + "}",
         R"({"data":[1,0,6,0,0,0,7,1,3,0,1,0,8,0,0,1,1,1,4,1,0,3,6,1,0,1,0,5,0,0,0,6,1,4,0,)"
         R"(1,1,1,2,0,0,2,1,5,0,0,3,1,2,0,0,2,1,8,0],"resultId":"1"})"},
        {"{}", "semanticTokens/range", "{" + text + R"(,"range":)" + range(4, 0, 7) + "}",
         R"({"data":[4,0,5,0,0,0,6,1,4,0]})"},
        {"{}", "prepareRename", at + "}", R"({"placeholder":"A","range":)" + range(4, 6, 7) + "}"},
        {"{}", "prepareRename", nowhere, R"({"code":-32803,"message":"`$PROD` is a keyword"})"},
        // Words outside the models change only if the client asks the user about them.
        {"{}", "rename", at + R"(,"newName":"B"})",
         R"({"changes":{"file:///m.zlm":)" + edits("") + "}}"},
        {R"({"workspace":{"workspaceEdit":{)" + versions + "}}}", "rename",
         at + R"(,"newName":"B"})",
         R"({"documentChanges":[{"edits":)" + edits("") + "," + document + "}]}"},
        {R"({"workspace":{"workspaceEdit":{"changeAnnotationSupport":{},)" + versions + "}}}",
         "rename", at + R"(,"newName":"B"})",
         R"({"changeAnnotations":{"host text":{"description":"Words outside the models that )"
         R"(match the name","label":"Rename in the host's program",)"
         R"("needsConfirmation":true}},"documentChanges":[{"edits":)" +
             edits(R"({"annotationId":"host text","newText":"B","range":)" + range(0, 0, 1) +
                   "},") +
             "," + document + "}]}"},
        {"{}", "rename", at + R"(,"newName":"P"})",
         R"({"code":-32803,"message":"model `M` already uses the name `P`"})"},
    };
    for (const Row& row : rows) {
        Session session(row.abilities, model);
        EXPECT_EQ(session.ask("textDocument/" + row.method, Json::parse(row.params)).dump(),
                  row.result)
            << row.abilities << " " << row.method;
    }
}

TEST(Navigation, FindsNamesInAllFilesOfTheFolders) {
    const harness::Folder folder;
    folder.write("b c.zlm", "$MODEL:N\n$CONSUMERS:\n Bank\n");
    folder.write("n.txt", "$MODEL:M\n$CONSUMERS:\n BANK\n");
    // The folder twice: each file is searched once.
    const Json item = {{"uri", "file://" + folder.path()}, {"name", "x"}};
    Session session("{}", model, {item, item});
    const std::pair<string, string> rows[] = {
        {"bk", "BANK in N b%20c.zlm:2\n"},
        {"kb", ""},
        {"M", "M in - m.zlm:1\n"},
        {"", "M in - m.zlm:1\nA in M m.zlm:3\nN in - b%20c.zlm:0\nBANK in N b%20c.zlm:2\n"},
    };
    for (const auto& [query, expected] : rows) {
        string found;
        for (const Json& symbol : session.ask("workspace/symbol", {{"query", query}})) {
            const string path = symbol["location"]["uri"];
            found += symbol["name"].get<string>() + " in " + symbol.value("containerName", "-") +
                     " " + path.substr(path.rfind('/') + 1) + ":" +
                     symbol["location"]["range"]["start"]["line"].dump() + "\n";
        }
        EXPECT_EQ(found, expected) << query;
    }
}

TEST(Navigation, RefusesToWriteOutsideOfTheFolders) {
    Session session("{}", model);
    const auto answer = [&](const string& command) {
        const Json params = {{"command", command}, {"arguments", Json::array({uri})}};
        return session.ask("workspace/executeCommand", params).dump();
    };
    const string outside =
        R"({"code":-32803,"message":"`/m.zlm` is not in a folder of the workspace"})";
    EXPECT_EQ(answer("orvex.translate"), outside);
    EXPECT_EQ(answer("orvex.picture"), outside);
    EXPECT_EQ(answer("orvex.x"), R"({"code":-32602,"message":"unknown command `orvex.x`"})");
}

TEST(Navigation, ReportsAgainOnlyWhatHasChanged) {
    const harness::Folder folder;
    folder.write("b.zlm", "$MODEL:B\n");
    folder.write("c.zlm", "$MODEL:C\n");
    Session session("{}", model, {{{"uri", "file://" + folder.path()}, {"name", "x"}}});
    Json known = Json::array();
    const auto kinds = [&] {
        std::map<string, string> found;
        const Json answer = session.ask("workspace/diagnostic", {{"previousResultIds", known}});
        known.clear();
        for (const Json& item : answer["items"]) {
            const string report = item["uri"];
            found[report.substr(report.rfind('/') + 1)] = item["kind"];
            known.push_back({{"uri", report}, {"value", item["resultId"]}});
        }
        return found;
    };
    using Kinds = std::map<string, string>;
    EXPECT_EQ(kinds(), (Kinds{{"m.zlm", "full"}, {"b.zlm", "full"}, {"c.zlm", "full"}}));
    folder.write("b.zlm", "$MODEL:D\n");
    EXPECT_EQ(kinds(), (Kinds{{"m.zlm", "unchanged"}, {"b.zlm", "full"}, {"c.zlm", "unchanged"}}));
}

}  // namespace
