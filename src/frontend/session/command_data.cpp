#include "frontend/session/command_data.h"

#include "frontend/cli/levels.h"
#include "frontend/expansion/data_files.h"
#include "frontend/session/generated.h"

namespace orvex::frontend {

void read_command_data(const Options& options, CommandData& data) {
    data.is_whole = read_data(options.data, data.files, data.findings);
}

void take_models(File& file, CommandData& data,
                 const std::function<void(const GeneratedModel& generated)>& take) {
    if (data.is_whole) {
        for (const GeneratedModel& generated : good_models(file)) take(generated);
    }
    std::vector<Finding>& findings = file.checked.findings;
    findings.insert(findings.begin(), data.findings.begin(), data.findings.end());
    data.findings.clear();
}

void show_unused_names(const CommandData& data, const Options& options, Reporter& reporter) {
    if (!data.is_whole || !options.model.empty()) return;
    std::vector<Finding> findings;
    add_unused_names(data.files, findings);
    apply_levels(options, findings);
    show_all(reporter, findings);
}

}  // namespace orvex::frontend
