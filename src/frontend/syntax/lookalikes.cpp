#include "frontend/syntax/lookalikes.h"

#include <algorithm>
#include <iterator>

namespace orvex::frontend {

namespace {

using std::string_view;

struct Row {
    string_view bytes;  // in UTF-8
    string_view name;
    char meant;
};

constexpr Row table[] = {
    {"\xC2\xA0", "U+00A0", ' '},     {"\xE2\x80\x80", "U+2000", ' '},
    {"\xE2\x80\x81", "U+2001", ' '}, {"\xE2\x80\x82", "U+2002", ' '},
    {"\xE2\x80\x83", "U+2003", ' '}, {"\xE2\x80\x84", "U+2004", ' '},
    {"\xE2\x80\x85", "U+2005", ' '}, {"\xE2\x80\x86", "U+2006", ' '},
    {"\xE2\x80\x87", "U+2007", ' '}, {"\xE2\x80\x88", "U+2008", ' '},
    {"\xE2\x80\x89", "U+2009", ' '}, {"\xE2\x80\x8A", "U+200A", ' '},
    {"\xE2\x80\xAF", "U+202F", ' '}, {"\xE2\x81\x9F", "U+205F", ' '},
    {"\xE3\x80\x80", "U+3000", ' '}, {"\xE2\x80\x90", "U+2010", '-'},
    {"\xE2\x80\x91", "U+2011", '-'}, {"\xE2\x80\x92", "U+2012", '-'},
    {"\xE2\x80\x93", "U+2013", '-'}, {"\xE2\x80\x94", "U+2014", '-'},
    {"\xE2\x80\x95", "U+2015", '-'}, {"\xE2\x88\x92", "U+2212", '-'},
    {"\xEF\xB9\xA3", "U+FE63", '-'}, {"\xEF\xBC\x8D", "U+FF0D", '-'},
};

bool is_ascii(char c) { return static_cast<unsigned char>(c) < 0x80; }

// The end of a quoted text that begins at `at`; a quote without its partner is a character of its
// own.
std::size_t end_of_quoted(string_view text, std::size_t at) {
    const std::size_t end = text.find(text[at], at + 1);
    return end == string_view::npos ? at + 1 : end + 1;
}

}  // namespace

std::vector<Lookalike> lookalikes(string_view text) {
    std::vector<Lookalike> found;
    if (std::all_of(text.begin(), text.end(), is_ascii)) return found;
    for (std::size_t at = 0; at < text.size();) {
        const bool is_quote = text[at] == '"' || text[at] == '\'';
        if (is_quote || is_ascii(text[at])) {
            at = is_quote ? end_of_quoted(text, at) : at + 1;
            continue;
        }
        const auto* const row =
            std::find_if(std::begin(table), std::end(table),
                         [&](const Row& each) { return text.substr(at).starts_with(each.bytes); });
        const std::size_t size = row == std::end(table) ? 1 : row->bytes.size();
        if (row != std::end(table)) found.push_back({at, at + size, row->meant, row->name});
        at += size;
    }
    return found;
}

std::string without_lookalikes(string_view text) {
    std::string plain;
    std::size_t end = 0;
    for (const Lookalike& found : lookalikes(text)) {
        plain.append(text.substr(end, found.begin - end)).push_back(found.meant);
        end = found.end;
    }
    return plain.append(text.substr(end));
}

}  // namespace orvex::frontend
