#include "frontend/accounts/account_findings.h"
#include "frontend/accounts/balance.h"
#include "frontend/accounts/transaction.h"
#include "frontend/expansion/interpreter.h"
#include "frontend/expansion/program.h"
#include "frontend/findings/place.h"
#include "frontend/rules/checks.h"
#include "frontend/rules/facts.h"
#include "frontend/rules/host_levels.h"
#include "frontend/rules/warn.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace orvex::frontend {

namespace {

using notation::Meaning;

constexpr std::string_view codes[] = {gap_code, open_demands_code, price_code};

// Quantities up to this size are not printed.
constexpr double least_quantity = 1e-8;

// The entries of a model, with the places that they refer to by number.
struct PlainEntries {
    std::vector<Transaction> entries;
    std::vector<Range> places;
};

bool is_in_model(const Subject& subject, const Finding& finding) {
    const ModelNode& node = subject.source.tree.models[subject.model->node];
    return finding.span.line >= line_of_record(node.record) &&
           finding.span.line < line_of_record(node.end);
}

// Does the model have another finding? It may have the same cause.
bool has_other_finding(const Subject& subject, const Findings& findings) {
    return std::any_of(findings.begin(), findings.end(), [&](const Finding& finding) {
        const bool is_own =
            std::find(std::begin(codes), std::end(codes), finding.code) != std::end(codes);
        return !is_own && finding.severity != Severity::off && is_in_model(subject, finding);
    });
}

// Do the model's names, blocks and entries have sets, elements or conditions?
bool has_sets(const Subject& subject) {
    const Tree& tree = subject.source.tree;
    const ModelNode& node = tree.models[subject.model->node];
    for (Index record = node.record; record < node.end; ++record) {
        const RecordKind kind = tree.records[record].kind;
        if (kind == RecordKind::body || kind == RecordKind::report) continue;
        for (Index token = tree.records[record].token; token < tree.records[record + 1].token;
             ++token) {
            const TokenKind part = tree.tokens[token].kind;
            if (part == TokenKind::open || part == TokenKind::list || part == TokenKind::condition)
                return true;
        }
    }
    return false;
}

// Does the model have names of the host, or variables to which the host gives values other than 1
// or 0?
bool has_host_names(const Subject& subject) {
    const auto& symbols = subject.model->symbols;
    const bool any = std::any_of(symbols.begin(), symbols.end(), [](const Symbol& symbol) {
        return symbol.entered && (symbol.kind == Kind::parameter || symbol.kind == Kind::set);
    });
    return any || sets_levels(subject.source, *subject.model);
}

// The value of an expression that contains only numbers, as the host prints it.
std::optional<double> value_of_expression(std::string_view text) {
    const std::string generator = "PUT /,''(" + std::string(text) + ");\n";
    std::vector<Flaw> flaws;
    const GeneratorProgram program = read_program(generator, flaws);
    if (!flaws.empty() || program.names.size() > 0) return std::nullopt;
    const NameTable elements;
    Data data;
    data.elements = &elements;
    try_program(program, data, {}, flaws);
    if (!flaws.empty()) return std::nullopt;
    std::optional<double> value;
    run_program(program, data, {},
                [&](std::string_view line, Range) { value = printed_number(line); });
    return value;
}

std::optional<double> plain_number(std::string_view text) {
    const std::optional<double> number = printed_number(text);
    return number || !text.starts_with('(') ? number : value_of_expression(text);
}

// Takes the entries of a model as long as they are plain.
class Taker {
  public:
    Taker(const Subject& subject, PlainEntries& taken) : subject_(subject), taken_(taken) {}

    // False if the row is not plain.
    bool take(const Row& row) {
        if (row.outside || row.indented || row.stray || row.unclear) return false;
        if (row.entry == nullptr) return true;
        const Meaning flow = meaning_of(row.entry->head);
        const auto fields = fields_of(subject_.facts->rows, row);
        if (!is_of_sector(flow) && !is_of_consumer(flow)) return fields.empty();
        Transaction entry;
        entry.flow = flow;
        entry.owner = name(*row.owner);
        entry.commodity = name(row.entry->head);
        entry.place = place_of(row.entry->head.reference.name);
        entry.price_place = entry.place;
        for (const Field* const field : fields) {
            if (!take_field(*field, entry)) return false;
        }
        const bool is_printed = std::abs(entry.quantity.value_or(1)) > least_quantity;
        if (is_printed) taken_.entries.push_back(std::move(entry));
        return true;
    }

  private:
    std::string name(const Field& field) const { return as_read(subject_, field.reference.name); }

    std::size_t place_of(Range range) {
        taken_.places.push_back(range);
        return taken_.places.size() - 1;
    }

    // A variable that multiplies a quantity usually has its own level, which the text does not
    // give.
    bool take_field(const Field& field, Transaction& entry) {
        const Meaning meaning = meaning_of(field);
        if (meaning == Meaning::ration) return false;
        if (meaning == Meaning::tax_receiver) {
            entry.tax_fields.push_back({TaxField::Kind::receiver, name(field), 0});
        } else if (meaning == Meaning::tax_rate && field.is_name) {
            entry.tax_fields.push_back({TaxField::Kind::variable, name(field), 0});
        } else {
            return take_value(field, meaning, entry);
        }
        return true;
    }

    bool take_value(const Field& field, Meaning meaning, Transaction& entry) {
        const bool is_quantity =
            field.row != nullptr && field.row->text == notation::quantity_label;
        if (!is_quantity && meaning != Meaning::price && meaning != Meaning::tax_rate) return true;
        const std::optional<double> number = plain_number(text_in(subject_, field.text));
        if (!number) return false;
        if (is_quantity) {
            entry.quantity = number;
        } else if (meaning == Meaning::price) {
            entry.price = number;
            entry.price_place = place_of(field.text);
        } else {
            entry.tax_fields.push_back({TaxField::Kind::rate, {}, *number});
        }
        return true;
    }

    const Subject& subject_;
    PlainEntries& taken_;
};

std::optional<PlainEntries> read_entries(const Subject& subject) {
    PlainEntries taken;
    Taker taker(subject, taken);
    const auto& rows = subject.facts->rows.rows;
    const bool all =
        std::all_of(rows.begin(), rows.end(), [&](const Row& row) { return taker.take(row); });
    if (!all || taken.entries.empty()) return std::nullopt;
    return taken;
}

// Does every sector and consumer have a block, and every commodity a supply and a demand?
bool is_whole(const Subject& subject, const Books& books) {
    const Model& model = *subject.model;
    for (Index index = 0; index < model.symbols.size(); ++index) {
        const Symbol& symbol = model.symbols[index];
        if (!symbol.is_declared) continue;
        const bool owns = symbol.kind == Kind::sector || symbol.kind == Kind::consumer;
        if (owns && subject.facts->blocks[index] == nullptr) return false;
        const bool trades = symbol.kind == Kind::commodity;
        if (trades && !find_account(books, AccountKind::commodity, name_of(model, index)))
            return false;
    }
    return std::all_of(books.accounts.begin(), books.accounts.end(), [](const Account& account) {
        const bool has_demand = account.received != 0 || account.takes_rest;
        return account.kind != AccountKind::commodity || (has_demand && account.paid != 0);
    });
}

}  // namespace

void check_accounts(const Subject& subject, Findings& findings) {
    const Model& model = *subject.model;
    if (!model.errors.empty() || model.lost || has_other_finding(subject, findings)) return;
    if (has_sets(subject) || has_host_names(subject)) return;
    std::optional<PlainEntries> taken = read_entries(subject);
    if (!taken) return;
    ModelAccounts accounts = balance_transactions(taken->entries, {});
    if (!is_whole(subject, accounts.books)) return;
    const auto place_of = [&](std::size_t place) {
        return span_of(subject.source, taken->places[place]);
    };
    const auto place_of_account = [&](const Account& account) {
        const Symbol* const symbol = find_symbol(model, account.name);
        const bool is_declared = symbol != nullptr && symbol->is_declared;
        return is_declared ? span_of(subject.source, symbol->declaration) : place_of(account.place);
    };
    std::vector<Finding> found = findings_of(accounts, {place_of, place_of_account});
    std::erase_if(found, [&](const Finding& finding) { return finding.code != subject.code; });
    std::stable_sort(found.begin(), found.end(), [](const Finding& one, const Finding& other) {
        return one.span.begin < other.span.begin;
    });
    findings.insert(findings.end(), found.begin(), found.end());
}

}  // namespace orvex::frontend
