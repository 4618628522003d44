// Times the four routines that nearly every line of a model passes through: the record reader, the
// field splitter, the symbol lookup and the line writer.
#include "codegen/writer.h"
#include "input/fields.h"
#include "input/records.h"
#include "preproc.h"
#include "symbols/table.h"
#include "text/numbers.h"
#include "unit.h"

#include <benchmark/benchmark.h>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace {

using namespace orvex;

// Typical consecutive lines of a production block.
constexpr View typical_lines[] = {
    "$PROD:YAGR1(R)  S:0.5",
    "    O:PAGR1(R)        Q:QRAGR3(R)",
    "* wages and rents of the base year",
    "    I:WAGR(R)$(QRFOO(R) GT 0)  Q:QRTEX2(R)  P:QRFOO(R)",
    "+   A:HAGR  T:TAXAGR",
    "    I:PFOO2(R,T)      Q:QRTFOO(R,T)  P:1.2  A:HAGR  T:TAXFOO   ! with a tax",
};

// A file of typical lines, removed with this object.
class InputFile {
  public:
    static constexpr int lines = 1200;

    InputFile() {
        std::ofstream out(path_);
        for (int i = 0; i < lines; ++i)
            out << typical_lines[static_cast<std::size_t>(i) % std::size(typical_lines)] << '\n';
    }
    InputFile(const InputFile&) = delete;
    InputFile& operator=(const InputFile&) = delete;
    ~InputFile() { std::filesystem::remove(path_); }

    const std::string& path() const { return path_; }

  private:
    std::string path_ = std::filesystem::temp_directory_path() / "orvexpp-micro.zlm";
};

void read_records(benchmark::State& state) {
    const InputFile file;
    for (auto _ : state) {
        open_input(kinp, file.path());
        open_scratch(klst);
        while (getrec() == 0) benchmark::DoNotOptimize(record);
    }
    close_all_units();
    state.SetItemsProcessed(state.iterations() * InputFile::lines);
}
BENCHMARK(read_records);

void split_fields(benchmark::State& state) {
    constexpr int fields = 5;
    reset_model();
    for (auto _ : state) {
        record = "    I:PFOO2(R,T)$(QRFOO(R) GT 0)  Q:QRTFOO(R,T)  P:1.2  A:HAGR  T:TAXFOO";
        while (!record.is_blank()) parse();
    }
    state.SetItemsProcessed(state.iterations() * fields);
}
BENCHMARK(split_fields);

// Fills the table, then looks up each name in turn.
void look_up(benchmark::State& state, View prefix) {
    constexpr int names = 1000;
    std::vector<Name> all;
    reset_model();
    narg = 0;
    for (int i = 0; i < names; ++i) {
        all.push_back(joined<maxname>({prefix, zero_filled<4>(i)}));
        root = all.back().view();
        addsym('D');
    }
    for (auto _ : state) {
        for (const Name& name : all) chksym(name, 'D');
    }
    state.SetItemsProcessed(state.iterations() * names);
}
BENCHMARK_CAPTURE(look_up, short_names, "Q");
BENCHMARK_CAPTURE(look_up, long_names, "GROSS_OUTPUT_QUANTITY_IN_THE_YEAR_NUMBER_");

void write_lines(benchmark::State& state) {
    reset_model();
    open_output(kgen, "/dev/null");
    nloop = 2;
    for (auto _ : state) {
        output = "IF ((QRFOO(R) GT 0), PUT /,'I:PFOO2','.',R.TL,'.',T.TL );";
        wrtzlm();
    }
    close_all_units();
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(write_lines);

}  // namespace
