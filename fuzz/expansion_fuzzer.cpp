// Reads a fuzzed data file, and runs a generator file with it. The data are the data file up to the
// first zero byte, followed by the generator file; if there is none, the one below is used.
#include "frontend/expansion/data_files.h"
#include "frontend/expansion/interpreter.h"
#include "frontend/expansion/model_data.h"

#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

using namespace orvex::frontend;

constexpr std::string_view usual_program =
    "PUT   ORV,'$MODEL:M'/;\n"
    "{    1}  LOOP((S)$(SUB(S)),\n"
    "{    2}    PUT /,'O:P''.'S.TL'.'S.TE(S++1);\n"
    "{    2}    PUT /,'+Q:'(SUM(SS$(X(SS) NE 0),X(SS+K)/X(\"A\"))$MAP(S,\"A\"));\n"
    "{    3}  );\n";

// Thrown to end a run: fuzzed loops can be long.
struct Enough {};

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string input(data, data + size);
    const std::size_t zero = input.find('\0');
    DataFiles files;
    files.texts.push_back({"data", input.substr(0, zero)});
    const std::string generator =
        zero == std::string::npos ? std::string(usual_program) : input.substr(zero + 1);

    std::vector<Finding> findings;
    const bool is_json = files.texts.back().bytes.starts_with('{');
    if (!(is_json ? read_json_data(files, findings) : read_csv_data(files, findings))) return 0;
    std::vector<Flaw> flaws;
    const GeneratorProgram program = read_program(generator, flaws);
    Data of_model;
    if (!make_data(files, program, {{"Y", 1}}, of_model, findings)) return 0;
    check_data(program, of_model, flaws);
    find_unknown_elements(files, program, of_model, findings, flaws);
    add_unused_names(files, findings);
    if (!flaws.empty()) return 0;
    int pauses = 0;
    const Pause pause = [&] {
        if (++pauses > 8) throw Enough();
    };
    try {
        try_program(program, of_model, pause, flaws);
        if (flaws.empty()) run_program(program, of_model, pause, [](std::string_view, Range) {});
    } catch (const Enough&) {
    }
    return 0;
}
