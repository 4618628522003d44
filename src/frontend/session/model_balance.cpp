#include "frontend/session/model_balance.h"

#include "frontend/accounts/account_findings.h"
#include "frontend/findings/place.h"
#include "frontend/session/balance_output.h"
#include "frontend/session/session.h"

#include <cstddef>
#include <string_view>
#include <utility>

namespace orvex::frontend {

namespace {

// Packs a place in the generator text into one number.
constexpr unsigned offset_bits = 32;

LinePlace packed(Range place) { return LinePlace{place.begin} << offset_bits | place.end; }

Range unpacked(LinePlace place) {
    return {static_cast<Offset>(place >> offset_bits), static_cast<Offset>(place)};
}

// An account is shown at the declaration of its variable's name.
Places places_of(const GeneratedModel& generated) {
    const auto of = [&generated](LinePlace place) {
        return span_of_place(generated, unpacked(place));
    };
    const auto of_account = [&generated, of](const Account& account) {
        const std::string_view name = account.name;
        const Symbol* const symbol = find_symbol(generated.model, name.substr(0, name.find('.')));
        const bool is_declared = symbol != nullptr && symbol->is_declared;
        return is_declared ? span_of(generated.source, symbol->declaration) : of(account.place);
    };
    return {of, of_account};
}

}  // namespace

std::optional<ModelAccounts> balance_model(const GeneratedModel& generated, DataFiles& files,
                                           const Options& options, std::vector<Finding>& findings) {
    Expansion expansion;
    if (!prepare_expansion(generated, files, stop_if_interrupted, expansion, findings))
        return std::nullopt;
    const LinePass pass = [&](const LineSink& sink) {
        expand(expansion, stop_if_interrupted,
               [&](std::string_view line, Range place) { sink(line, packed(place)); });
        return true;
    };
    const Levels levels = [&](std::string_view name) { return find_level(expansion.data, name); };
    std::vector<ModelAccounts> models;
    BalanceSettings settings = settings_of(options, levels);
    settings.has_rows = true;
    balance_text(pass, settings, models);
    if (models.empty()) return std::nullopt;
    ModelAccounts& model = models.front();
    model.line = static_cast<std::size_t>(generated.source.models[generated.model.node].line);
    for (Finding& finding : findings_of(model, places_of(generated)))
        findings.push_back(std::move(finding));
    return std::move(model);
}

}  // namespace orvex::frontend
