#include "frontend/accounts/account_findings.h"

#include "frontend/base/decimals.h"
#include "frontend/findings/failure.h"

#include <string>
#include <utility>

namespace orvex::frontend {

namespace {

constexpr int shown_digits = 10;

std::string shown(double number) { return rounded_decimal(number, shown_digits); }

std::string_view variant_of(AccountKind kind) {
    switch (kind) {
    case AccountKind::sector: return "";
    case AccountKind::commodity: return "commodity";
    case AccountKind::consumer: break;
    }
    return "consumer";
}

void add_note(Finding& finding, std::string_view text, Span span) {
    finding.remarks.insert(finding.remarks.begin(),
                           {Severity::note, std::string(text), std::move(span)});
}

Finding gap_finding(const ModelAccounts& model, AccountIndex index, const Places& places) {
    const Account& account = model.books.accounts[index];
    const FindingWords words = words_of_gap(account);
    Finding finding =
        failure(std::string(gap_code), words.values, places.of_account(account), words.variant);
    if (model.likely) add_note(finding, likely_note, places.of(model.likely->place));
    return finding;
}

Finding price_finding(const PriceGap& price, const Places& places) {
    const FindingWords words = words_of_price(price);
    Finding finding = warning(std::string(price_code), words.values,
                              places.of(price.entry.price_place), words.variant);
    if (price.more > 0) {
        const std::string count = std::to_string(price.more);
        add_note(finding, "the same for " + count + " more with other elements", {});
    }
    return finding;
}

Finding open_finding(const ModelAccounts& model, AccountIndex index, const Places& places) {
    const Account& consumer = model.books.accounts[index];
    const FindingWords words = words_of_open_demands(consumer);
    return failure(std::string(open_demands_code), words.values, places.of_account(consumer));
}

void add_price_findings(const ModelAccounts& model, const Places& places,
                        std::vector<Finding>& findings) {
    for (const auto& [line, price] : model.prices) findings.push_back(price_finding(price, places));
    if (model.more_prices == 0) return;
    const std::string count = std::to_string(model.more_prices);
    add_note(findings.back(), "the same in " + count + " more lines", {});
}

}  // namespace

FindingWords words_of_gap(const Account& account) {
    return {variant_of(account.kind),
            {{"name", account.name},
             {"received", shown(account.received)},
             {"paid", shown(account.paid)},
             {"cost", shown(cost_of(account))},
             {"taxes", shown(account.taxes)}}};
}

FindingWords words_of_open_demands(const Account& consumer) {
    return {"", {{"name", consumer.name}, {"count", std::to_string(consumer.open_count)}}};
}

FindingWords words_of_price(const PriceGap& price) {
    const auto& given = price.entry.price;
    return {given ? "" : "missing",
            {{"name", price.entry.commodity},
             {"price", shown(given.value_or(1))},
             {"expected", shown(price.expected)}}};
}

std::vector<LinePlace> places_in(const ModelAccounts& model) {
    std::vector<LinePlace> lines;
    for (const AccountIndex index : model.gaps.accounts)
        lines.push_back(model.books.accounts[index].place);
    for (const AccountIndex index : model.gaps.undetermined)
        lines.push_back(model.books.accounts[index].place);
    for (const auto& [line, price] : model.prices) lines.push_back(line);
    for (const PrintedFault& fault : model.faults) lines.push_back(fault.line);
    if (model.likely) lines.push_back(model.likely->place);
    return lines;
}

std::vector<Finding> findings_of(const ModelAccounts& model, const Places& places) {
    std::vector<Finding> findings;
    for (const PrintedFault& fault : model.faults) {
        findings.push_back(failure("printed-line-invalid", {{"text", fault.text}},
                                   places.of(fault.line), fault.variant));
    }
    if (!findings.empty()) return findings;
    add_price_findings(model, places, findings);
    for (const AccountIndex index : model.gaps.undetermined)
        findings.push_back(open_finding(model, index, places));
    for (const AccountIndex index : model.gaps.accounts)
        findings.push_back(gap_finding(model, index, places));
    return findings;
}

}  // namespace orvex::frontend
