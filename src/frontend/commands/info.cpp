#include "frontend/commands/info.h"

#include "frontend/session/session.h"
#include "frontend/views/info.h"
#include "frontend/views/json.h"

namespace orvex::frontend {

int run_info(const Options& options) {
    Options quiet = options;
    quiet.levels["all"] = Severity::off;
    const bool colour = use_colour(Stream(), options.colour);
    Steps steps;
    steps.wanted.models = true;
    steps.work = [&](File& file) {
        for (const Model& model : file.checked.models) {
            file.output += options.format == Format::json ? info_json(*file.source, model)
                                                          : info_text(*file.source, model, colour);
        }
    };
    return run_session(quiet, steps);
}

}  // namespace orvex::frontend
