#include "frontend/server/commands.h"

#include "frontend/base/files.h"
#include "frontend/base/graphviz.h"
#include "frontend/base/streams.h"
#include "frontend/session/check_file.h"
#include "frontend/translator/translator.h"
#include "frontend/views/graph.h"

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <string>
#include <vector>

namespace orvex::frontend {

namespace {

namespace fs = std::filesystem;

constexpr const char* translate_name = "orvex.translate";
constexpr const char* picture_name = "orvex.picture";

// A picture that takes longer to draw is too large to look at in an editor.
constexpr std::chrono::seconds picture_limit(5);

[[noreturn]] void refuse(const std::string& why) { throw RequestError{request_failed, why}; }

// The folder of a file of the workspace. Nothing is written outside the workspace.
fs::path folder_of(const Server& server, const Document& document) {
    fs::path folder = fs::path(document.source.path).parent_path().lexically_normal();
    const bool is_inside =
        std::any_of(server.folders.begin(), server.folders.end(), [&](const std::string& root) {
            const fs::path relative = folder.lexically_relative(fs::path(root).lexically_normal());
            return !relative.empty() && *relative.begin() != "..";
        });
    if (!is_inside) refuse("`" + document.source.path + "` is not in a folder of the workspace");
    return folder;
}

void write_file(const fs::path& path, const std::string& text, Json& written) {
    bool changed = false;
    if (!put_file(path.string(), text, changed))
        refuse("cannot write `" + path.string() + "`: " + system_message(errno));
    written.push_back(path.string());
}

Json translate(Server& server, const Document& document) {
    const fs::path folder = folder_of(server, document);
    Json written = Json::array();
    try {
        const TempDir place;
        Wanted wanted;
        wanted.outputs = true;
        const Checked checked = check_file(document.source, server.options, wanted,
                                           find_translator(server.options.program), place);
        for (const Finding& finding : checked.findings)
            if (finding.severity == Severity::error) refuse("the text has errors");
        for (const Translated& model : checked.outputs) {
            write_file(folder / (model.output.name + ".GEN"), model.output.generator, written);
            write_file(folder / (model.output.name + ".HDR"), model.output.header, written);
        }
    } catch (const StartFailure& error) {
        refuse("the translator cannot be run: " + error.reason);
    } catch (const FolderFailure& error) {
        refuse(text_of(error));
    }
    return written;
}

Json draw_pictures(Server& server, const Document& document) {
    const fs::path folder = folder_of(server, document);
    Json written = Json::array();
    for (const Model& model : document.models) {
        if (!model.errors.empty()) refuse("model `" + model.name + "` has errors");
        std::string svg;
        std::string reason;
        const std::string dot = draw(make_graph(document.source, model), "dot");
        const Drawing drawing = draw_svg(dot, picture_limit, svg, reason);
        if (drawing == Drawing::failed) refuse("the picture cannot be drawn: " + reason);
        if (drawing == Drawing::too_slow) refuse("model `" + model.name + "` is too large to draw");
        write_file(folder / (model.name + ".svg"), svg, written);
    }
    return written;
}

}  // namespace

Json command_names() { return {translate_name, picture_name}; }

Json execute_command(Server& server, const Json& params) {
    const std::string name = params.at("command").get<std::string>();
    if (name != translate_name && name != picture_name)
        throw RequestError{invalid_params, "unknown command `" + name + "`"};
    const Json text = {{"textDocument", {{"uri", params.at("arguments").at(0)}}}};
    const Document& document = open_text(server, text).document;
    return name == translate_name ? translate(server, document) : draw_pictures(server, document);
}

}  // namespace orvex::frontend
