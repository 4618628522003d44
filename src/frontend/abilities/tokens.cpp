#include "frontend/abilities/tokens.h"

#include "frontend/syntax/expressions.h"
#include "frontend/syntax/reading.h"
#include "notation/arguments.h"

#include <algorithm>
#include <array>
#include <optional>

namespace orvex::frontend {

namespace {

enum Type : std::uint32_t {
    keyword_type,
    comment_type,
    decorator_type,
    namespace_type,
    class_type,
    variable_type,
    interface_type,
    property_type,
    parameter_type,
    type_type,
    event_type,
    function_type,
    element_type,
    number_type,
    string_type,
    macro_type,
    operator_type,
};

constexpr std::array<std::string_view, operator_type + 1> names = {
    "keyword",    "comment",  "decorator", "namespace", "class",   "variable",
    "interface",  "property", "parameter", "type",      "event",   "function",
    "enumMember", "number",   "string",    "macro",     "operator"};

Type type_of(Kind kind) {
    switch (kind) {
    case Kind::sector: return class_type;
    case Kind::commodity: return variable_type;
    case Kind::consumer: return interface_type;
    case Kind::auxiliary: return property_type;
    case Kind::set: return type_type;
    case Kind::report: return event_type;
    case Kind::parameter:
    case Kind::host: break;
    }
    return parameter_type;
}

// The type of a token that is not a use of a name.
std::optional<Type> type_of(TokenKind kind, std::string_view text) {
    switch (kind) {
    case TokenKind::keyword: return keyword_type;
    case TokenKind::comment:
    case TokenKind::description:
    case TokenKind::unread:
    case TokenKind::ignored: return comment_type;
    case TokenKind::model_name: return namespace_type;
    case TokenKind::label: return decorator_type;
    case TokenKind::number: return number_type;
    case TokenKind::text:
    case TokenKind::string: return string_type;
    case TokenKind::macro: return macro_type;
    case TokenKind::attribute: return property_type;
    case TokenKind::argument: return text.starts_with('"') ? element_type : std::optional<Type>();
    case TokenKind::word:
        if (is_operator_word(capitals(text))) return operator_type;
        return is_function(capitals(text)) ? function_type : std::optional<Type>();
    default: return {};
    }
}

// Goes through the tokens of a text and the uses in them, both in text order.
class Collector {
  public:
    Collector(const Document& document, Range range) : document_(document), range_(range) {}

    std::vector<ColouredToken> collect() {
        const Tree& tree = document_.source.tree;
        const auto first = std::upper_bound(
            tree.tokens.begin(), tree.tokens.end(), range_.begin,
            [](Offset offset, const Token& token) { return offset < token.begin; });
        auto token = static_cast<Index>(first - tree.tokens.begin());
        if (token > 0) --token;
        go_to_use(tree.tokens[token].begin);
        for (; token + 1 < tree.tokens.size(); ++token) {
            if (tree.tokens[token].begin >= range_.end) break;
            take(tree.tokens[token].kind, range_of(tree, token));
        }
        return std::move(found_);
    }

  private:
    void go_to_use(Offset offset) {
        const auto at = std::lower_bound(document_.uses.begin(), document_.uses.end(), offset,
                                         [&](const UsePlace& use, Offset place) {
                                             return use_of(document_, use).range.begin < place;
                                         });
        use_ = static_cast<std::size_t>(at - document_.uses.begin());
    }

    void take(TokenKind kind, Range token) {
        if (take_uses(token)) return;
        const auto type = type_of(kind, text_of(document_.source.bytes, token));
        if (type) found_.push_back({token, *type, false});
    }

    // A token can contain several uses if it is an expression that is not split further.
    bool take_uses(Range token) {
        bool found = false;
        Offset end = token.begin;
        for (; use_ < document_.uses.size(); ++use_) {
            const UsePlace& place = document_.uses[use_];
            const Use& use = use_of(document_, place);
            if (use.range.begin >= token.end) break;
            if (use.range.begin < end || use.range.end > token.end) continue;
            const Kind kind = model_of(document_, place).symbols[use.symbol].kind;
            found_.push_back({use.range, type_of(kind), use.role == Role::declared});
            end = use.range.end;
            found = true;
        }
        return found;
    }

    const Document& document_;
    Range range_;
    std::size_t use_ = 0;
    std::vector<ColouredToken> found_;
};

}  // namespace

std::span<const std::string_view> token_types() { return names; }

std::vector<ColouredToken> coloured_tokens(const Document& document, Range range) {
    return Collector(document, range).collect();
}

}  // namespace orvex::frontend
