#include "frontend/syntax/expression_parts.h"

#include "frontend/syntax/expressions.h"
#include "notation/records.h"

#include <algorithm>

namespace orvex::frontend {

namespace {

constexpr std::string_view openings = "([{";
constexpr std::string_view closings = ")]}";

// The position of a part's only character in a list of characters, or npos.
std::size_t place_in(std::string_view characters, const Part& part) {
    if (part.kind != TokenKind::symbol || part.text.size() != 1) return std::string_view::npos;
    return characters.find(part.text.front());
}

bool ends_operand(const Part& part) {
    const bool is_constant = part.kind == TokenKind::number || part.kind == TokenKind::string ||
                             part.kind == TokenKind::attribute;
    return is_constant || is_name(part) || closes_group(part);
}

bool begins_operand(const Part& part) {
    const bool is_constant = part.kind == TokenKind::number || part.kind == TokenKind::string;
    return is_constant || is_name(part) || part.text == "NOT" || opens_group(part);
}

// Are the two joined without a blank, like the element S.1 of a set?
bool is_element(const Part& left, const Part& right) {
    return left.range.end == right.range.begin && right.text.starts_with('.');
}

bool may_be_called(const Part& part) {
    return part.kind == TokenKind::word || part.kind == TokenKind::attribute;
}

// Does the host replace the part by another text?
bool is_macro(const Part& part) { return part.kind == TokenKind::macro || is_symbol(part, "%"); }

// Does this part need an operand after it, so that no operator can follow?
bool awaits_operand(const Part& part) {
    constexpr std::string_view awaiting = "([{,$+-*/<>=";
    return place_in(awaiting, part) != std::string_view::npos || is_relation(part);
}

}  // namespace

void add_parts(std::string_view bytes, Range range, std::vector<Part>& parts) {
    std::string text(text_of(bytes, range));
    std::transform(text.begin(), text.end(), text.begin(), notation::as_read);
    for (std::size_t at = 0; at < text.size();) {
        const Lexeme next = next_lexeme(text, at);
        const Range place = {range.begin + static_cast<Offset>(at),
                             range.begin + static_cast<Offset>(next.end)};
        if (next.kind != TokenKind::blank)
            parts.push_back({next.kind, place, text.substr(at, next.end - at)});
        at = next.end;
    }
}

bool opens_group(const Part& part) { return place_in(openings, part) != std::string_view::npos; }
bool closes_group(const Part& part) { return place_in(closings, part) != std::string_view::npos; }

bool is_relation(const Part& part) {
    return part.kind == TokenKind::symbol && part.text.size() == 3 && part.text.front() == '=';
}

bool is_name(const Part& part) {
    return part.kind == TokenKind::word && !is_operator_word(part.text);
}

std::size_t unmatched_group(std::span<const Part> parts) {
    std::vector<std::size_t> open;
    for (std::size_t at = 0; at < parts.size(); ++at) {
        if (opens_group(parts[at])) open.push_back(at);
        if (!closes_group(parts[at])) continue;
        if (open.empty()) return at;
        const bool fits = place_in(openings, parts[open.back()]) == place_in(closings, parts[at]);
        if (!fits) return open.back();
        open.pop_back();
    }
    return open.empty() ? no_part : open.back();
}

std::size_t end_of_group(std::span<const Part> parts, std::size_t open) {
    int depth = 0;
    for (std::size_t at = open; at < parts.size(); ++at) {
        depth += opens_group(parts[at]) ? 1 : 0;
        if (closes_group(parts[at]) && --depth == 0) return at + 1;
    }
    return parts.size();
}

bool lacks_operator(std::span<const Part> parts, std::size_t at) {
    if (at == 0 || at >= parts.size()) return false;
    const Part& left = parts[at - 1];
    const Part& right = parts[at];
    const bool calls = may_be_called(left) && opens_group(right);
    return ends_operand(left) && begins_operand(right) && !calls && !is_element(left, right);
}

std::size_t missing_operator(std::span<const Part> parts) {
    for (std::size_t at = 1; at < parts.size(); ++at) {
        if (lacks_operator(parts, at)) return at;
    }
    return no_part;
}

std::size_t begin_of_operand(std::span<const Part> parts, std::size_t end) {
    std::size_t at = end - 1;
    int depth = closes_group(parts[at]) ? 1 : 0;
    while (depth > 0 && at > 0) {
        --at;
        depth += closes_group(parts[at]) ? 1 : opens_group(parts[at]) ? -1 : 0;
    }
    if (at > 0 && opens_group(parts[at]) && may_be_called(parts[at - 1])) --at;
    while (at > 0 && parts[at].kind == TokenKind::attribute) --at;
    return at;
}

int count_arguments(std::span<const Part> parts, std::size_t at) {
    if (at >= parts.size() || (at > 0 && is_macro(parts[at - 1]))) return -1;
    std::size_t open = at + 1;
    while (open < parts.size() && parts[open].kind == TokenKind::attribute) ++open;
    if (open < parts.size() && is_macro(parts[open])) return -1;
    if (open == parts.size() || !opens_group(parts[open])) return 0;
    int depth = 0;
    int count = 1;
    const std::size_t end = end_of_group(parts, open);
    for (std::size_t i = open; i < end; ++i) {
        if (is_macro(parts[i])) return -1;
        depth += opens_group(parts[i]) ? 1 : closes_group(parts[i]) ? -1 : 0;
        if (depth == 1 && is_symbol(parts[i], ",")) ++count;
    }
    return count;
}

bool is_operator_as_name(std::span<const Part> parts, std::size_t at) {
    const Part& part = parts[at];
    if (part.kind != TokenKind::word || !is_operator_word(part.text) || part.text == "NOT")
        return false;
    if (at > 0 && !awaits_operand(parts[at - 1])) return false;
    if (at + 1 == parts.size()) return true;
    const Part& next = parts[at + 1];
    const bool is_joined = next.range.begin == part.range.end;
    return closes_group(next) || next.kind == TokenKind::attribute ||
           (is_joined && opens_group(next));
}

}  // namespace orvex::frontend
