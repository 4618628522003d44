// Times the first steps of every orvex command on a text, and its layout.
#include "frontend/layout/layout.h"

#include "frontend/fixes/revision.h"
#include "frontend/model/build.h"
#include "frontend/syntax/parse.h"
#include "frontend/syntax/source.h"

#include <benchmark/benchmark.h>
#include <string>
#include <vector>

namespace {

using namespace orvex::frontend;

// A model of some thousand lines, with blanks as people write them.
std::string written_model() {
    std::string text = "$MODEL:M\n";
    for (int block = 0; block < 400; ++block) {
        const std::string number = std::to_string(block);
        text += "$sectors:\n   Y" + number + "(R)   ! output\n";
        text += "$prod:Y" + number + "(R)   S:0.5\n";
        text += "   O:PAGR" + number + "(R)   Q:QRAGR3(R)\n* wages and rents of the base year\n";
        text += "   I:WAGR(R)$(QRFOO(R) GT 0)   Q:QRTEX2(R)   P:QRFOO(R)\n+   A:HAGR   T:TAXAGR\n";
        text += "   I:PFOO2(R)   Q:QRTFOO(R)   P:1.2   A:HAGR   T:TAXFOO      ! with a tax\n\n";
    }
    return text + "$OFFTEXT\n";
}

Source source_of(const std::string& text) {
    Source source;
    source.bytes = text;
    parse_source(source);
    return source;
}

std::vector<Edit> edits_of(const Source& source) {
    std::vector<Edit> edits;
    for (const Model& model : build_models(source.bytes, source.tree)) {
        const std::vector<Edit> of_model = layout_of(source, model);
        edits.insert(edits.end(), of_model.begin(), of_model.end());
    }
    return edits;
}

void count(benchmark::State& state, const std::string& text) {
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}

void parse_text(benchmark::State& state) {
    const std::string text = written_model();
    for (auto _ : state) benchmark::DoNotOptimize(parse(text));
    count(state, text);
}
BENCHMARK(parse_text);

void build_model_of_tree(benchmark::State& state) {
    const Source source = source_of(written_model());
    for (auto _ : state) benchmark::DoNotOptimize(build_models(source.bytes, source.tree));
    count(state, source.bytes);
}
BENCHMARK(build_model_of_tree);

// From the tree and the model to the new text.
void lay_out(benchmark::State& state, const std::string& text) {
    const Source source = source_of(text);
    const std::vector<Model> models = build_models(source.bytes, source.tree);
    for (auto _ : state)
        benchmark::DoNotOptimize(edited(source.bytes, layout_of(source, models.front())));
    count(state, text);
}

void lay_out_written(benchmark::State& state) { lay_out(state, written_model()); }
BENCHMARK(lay_out_written);

void lay_out_again(benchmark::State& state) {
    const Source source = source_of(written_model());
    lay_out(state, edited(source.bytes, edits_of(source)));
}
BENCHMARK(lay_out_again);

}  // namespace
