#include "frontend/accounts/balance.h"

#include <algorithm>
#include <utility>

namespace orvex::frontend {

namespace {

// Findings of each kind about lines that are kept; further ones are counted.
constexpr std::size_t most_kept = 100;

void keep_price(ModelAccounts& model, const Transaction& entry, double expected) {
    const auto found = model.prices.find(entry.price_place);
    if (found != model.prices.end()) {
        ++found->second.more;
    } else if (model.prices.size() < most_kept) {
        model.prices.emplace(entry.price_place, PriceGap{entry, expected});
    } else {
        ++model.more_prices;
    }
}

// If the text is a model, that explains all other faults.
void keep_fault(std::vector<PrintedFault>& faults, const PrintedFault& fault) {
    const bool is_explained = !faults.empty() && faults.front().variant == model_fault;
    if (is_explained || faults.size() == most_kept) return;
    if (fault.variant == model_fault) faults.clear();
    faults.push_back(fault);
}

// The first pass: posts all amounts.
class Poster {
  public:
    Poster(const BalanceSettings& settings, std::vector<ModelAccounts>& models)
        : settings_(settings), models_(models) {}

    PrintedParts parts() {
        return {[this](std::string_view name, LinePlace line) { begin_model(name, line); },
                [this](AccountKind kind, std::string_view name, LinePlace line) {
                    open_account(current().books, settings_.levels, kind, name, line);
                },
                [this](const Transaction& entry) { take(entry); },
                [this](const PrintedFault& fault) { keep_fault(current().faults, fault); }};
    }

    // Called after the last entry of the model.
    void end_model() {
        if (models_.size() == first_) return;
        settle(current().books, posting_);
        if (!current().faults.empty()) return;
        current().gaps = find_gaps(current().books, settings_.tolerance);
    }

  private:
    ModelAccounts& current() { return models_.back(); }

    void begin_model(std::string_view name, LinePlace line) {
        end_model();
        models_.emplace_back().name = name;
        current().line = line;
        if (!settings_.wants_matrix) return;
        posting_ = [this](AccountIndex row, AccountIndex column, double amount) {
            current().matrix[{row, column}] += amount;
        };
    }

    void take(const Transaction& entry) {
        ModelAccounts& model = current();
        post_entry(model.books, settings_.levels, entry, posting_);
        const auto expected =
            wrong_price(model.books, settings_.levels, entry, settings_.tolerance);
        if (expected) keep_price(model, entry, *expected);
    }

    const BalanceSettings& settings_;
    std::vector<ModelAccounts>& models_;
    std::size_t first_ = models_.size();  // of this text
    Posting posting_;
};

bool has_gap(const ModelAccounts& model) { return !model.gaps.accounts.empty(); }

Suspects suspects_of(const ModelAccounts& model, const BalanceSettings& settings) {
    Suspects suspects;
    suspects.gaps = model.gaps.accounts;
    suspects.has_rows = settings.has_rows;
    return suspects;
}

// An entry with a wrong price contains a wrong number, so it takes precedence.
std::optional<Transaction> likely_in(const ModelAccounts& model, const Suspects& suspects) {
    if (!has_gap(model)) return std::nullopt;
    if (model.prices.size() == 1) {
        const Transaction& entry = model.prices.begin()->second.entry;
        if (is_suspected(suspects, model.books, entry)) return entry;
    }
    return likely_entry(suspects);
}

// The second pass: which entries belong to all accounts with a gap?
bool find_likely(const LinePass& pass, const BalanceSettings& settings,
                 std::span<ModelAccounts> models) {
    std::size_t next = 0;
    Suspects suspects;
    const auto end_model = [&] {
        if (next > 0) models[next - 1].likely = likely_in(models[next - 1], suspects);
    };
    const PrintedParts parts{[&](std::string_view, std::size_t) {
                                 end_model();
                                 suspects = suspects_of(models[next++], settings);
                             },
                             [](AccountKind, std::string_view, std::size_t) {},
                             [&](const Transaction& entry) {
                                 const ModelAccounts& model = models[next - 1];
                                 if (has_gap(model)) suspect(suspects, model.books, entry);
                             },
                             [](const PrintedFault&) {}};
    PrintedReader reader{parts};
    const bool good =
        pass([&](std::string_view text, LinePlace line) { read_printed(reader, text, line); });
    end_printed(reader);
    end_model();
    return good;
}

}  // namespace

ModelAccounts balance_transactions(std::span<const Transaction> entries,
                                   const BalanceSettings& settings) {
    std::vector<ModelAccounts> models;
    Poster poster(settings, models);
    const PrintedParts parts = poster.parts();
    parts.model("", 0);
    for (const Transaction& entry : entries) parts.entry(entry);
    poster.end_model();
    ModelAccounts& model = models.front();
    if (!has_gap(model)) return std::move(model);
    Suspects suspects = suspects_of(model, settings);
    for (const Transaction& entry : entries) suspect(suspects, model.books, entry);
    model.likely = likely_in(model, suspects);
    return std::move(model);
}

bool balance_text(const LinePass& pass, const BalanceSettings& settings,
                  std::vector<ModelAccounts>& models) {
    const std::size_t first = models.size();
    Poster poster(settings, models);
    const PrintedParts parts = poster.parts();
    PrintedReader reader{parts};
    const bool good =
        pass([&](std::string_view text, LinePlace line) { read_printed(reader, text, line); });
    end_printed(reader);
    poster.end_model();
    if (!good) return false;
    const std::span<ModelAccounts> of_text = std::span(models).subspan(first);
    const bool any_gap = std::any_of(of_text.begin(), of_text.end(), has_gap);
    return !any_gap || find_likely(pass, settings, of_text);
}

}  // namespace orvex::frontend
