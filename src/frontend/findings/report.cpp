#include "frontend/findings/report.h"

#include "frontend/base/bytes.h"
#include "frontend/base/printable.h"
#include "frontend/findings/json.h"

#include <algorithm>
#include <array>
#include <utility>
#include <vector>

namespace orvex::frontend {

namespace {

// The layout of a finding.

// The longest line that is shown whole, and the size of the part shown of a longer one, in
// characters.
constexpr std::size_t longest_line = 160;
constexpr std::size_t window = 154;
constexpr std::size_t window_before = 50;  // before the place

struct Layout {
    std::size_t margin = 1;  // width of the largest line number
    bool colour = false;
};

std::string margin(const Layout& layout, std::string number, std::string_view bar) {
    number.resize(layout.margin, ' ');
    return styled(Style::blue, number + std::string(bar), layout.colour);
}

std::string location(const Span& span) {
    std::string text = printable(span.path);
    if (span.line > 0) {
        text += ':' + std::to_string(span.line) + ':' + std::to_string(span.column);
    }
    return text;
}

// The line of a span, and "^" under its place.
std::string excerpt(const Layout& layout, const Span& span, Style style) {
    const std::vector<std::string_view> line = shown_characters(span.text);
    const auto place = static_cast<std::size_t>(std::max(span.column, 1) - 1);
    const std::size_t length = static_cast<std::size_t>(std::max(span.end_column - span.column, 1));
    std::size_t begin = 0;
    std::size_t end = line.size();
    if (line.size() > longest_line) {
        begin = std::min(place - std::min(place, window_before), line.size() - window);
        end = begin + window;
    }
    std::string text = begin > 0 ? "..." : "";
    std::string carets(text.size(), ' ');
    for (std::size_t at = begin; at < end; ++at) {
        text += line[at];
        if (at < place) carets += line[at] == "\t" ? '\t' : ' ';
    }
    if (place > end) carets.append(place - end, ' ');
    if (end < line.size()) text += "...";
    const std::size_t last = std::max(std::min(place + length, end), place + 1);
    return '\n' + margin(layout, "", " |") + '\n' +
           margin(layout, std::to_string(span.line), text.empty() ? " |" : " | ") + text + '\n' +
           margin(layout, "", " | ") + carets +
           styled(style, std::string(last - place, '^'), layout.colour);
}

// The arrow line of a span, and its source line if it has one.
std::string place_of(const Layout& layout, const Span& span, Style style) {
    if (span.path.empty()) return {};
    std::string text = '\n' + margin(layout, "", "--> ") + location(span);
    if (span.line > 0) text += excerpt(layout, span, style);
    return text;
}

// What `orvex check` can do about a finding, to put after its help. It does not fill in
// placeholders.
std::string offer_of(const Finding& finding) {
    if (!finding.fix || finding.fix->confidence == Confidence::placeholders) return {};
    const bool is_certain = finding.fix->confidence == Confidence::certain;
    return is_certain ? " (`check --fix` does this)" : " (`check --fix --unsafe-fixes` does this)";
}

std::string remark_of(const Layout& layout, const Remark& remark) {
    const std::string name = severity_name(remark.severity);
    const std::string message = ": " + printable(remark.message);
    if (remark.span.path.empty()) {
        return '\n' + margin(layout, "", " = ") + styled(Style::bold, name, layout.colour) +
               message;
    }
    const Style style = style_of(remark.severity);
    return '\n' + styled(style, name, layout.colour) + message +
           place_of(layout, remark.span, style);
}

// Annotations.

// Escapes the characters that end or separate the parts of a workflow command.
std::string escaped(std::string_view text, std::string_view specials) {
    std::string out;
    for (const char c : text) {
        if (specials.find(c) == std::string_view::npos) {
            out += c;
        } else {
            append_percent(out, c);
        }
    }
    return out;
}

// The message and, on a line each, the remarks, which cannot be annotations of their own.
std::string annotation_text(const Finding& finding) {
    std::string text = printable(finding.message);
    for (const Remark& remark : finding.remarks) {
        text += '\n' + severity_name(remark.severity) + ": " + printable(remark.message);
        if (!remark.span.path.empty()) text += " (" + location(remark.span) + ')';
    }
    return text;
}

std::string annotation(const Finding& finding) {
    constexpr std::string_view in_text = "%\r\n";
    constexpr std::string_view in_property = "%\r\n:,";
    const Span& span = finding.span;
    const std::string line = std::to_string(std::max(span.line, 1));
    std::string text = finding.severity == Severity::error     ? "::error"
                       : finding.severity == Severity::warning ? "::warning"
                                                               : "::notice";
    text += " title=" + escaped(finding.code, in_property);
    if (!span.path.empty()) {
        text += ",file=" + escaped(printable(span.path), in_property) + ",line=" + line +
                ",endLine=" + line;
    }
    if (span.line > 0) {
        text +=
            ",col=" + std::to_string(span.column) + ",endColumn=" + std::to_string(span.end_column);
    }
    return text + "::" + escaped(annotation_text(finding), in_text);
}

// Statistics.

// A line for each code: its count, right-aligned, its severity and the code.
std::string table_of(const std::vector<CodeCount>& counts) {
    constexpr std::size_t severity_width = 7;
    std::size_t width = 0;
    for (const CodeCount& row : counts) width = std::max(width, std::to_string(row.count).size());
    std::string text;
    for (const CodeCount& row : counts) {
        const std::string count = std::to_string(row.count);
        std::string severity = severity_name(row.severity);
        severity.resize(severity_width, ' ');
        text.append(width - count.size(), ' ').append(count).append("  ");
        text.append(severity).append("  ").append(row.code).append("\n");
    }
    return text;
}

}  // namespace

Style style_of(Severity severity) {
    switch (severity) {
    case Severity::off:
    case Severity::help: return Style::cyan;
    case Severity::note: return Style::green;
    case Severity::warning: return Style::yellow;
    case Severity::error: break;
    }
    return Style::red;
}

std::string severity_name(Severity severity) {
    switch (severity) {
    case Severity::off: return "off";
    case Severity::help: return "help";
    case Severity::note: return "note";
    case Severity::warning: return "warning";
    case Severity::error: break;
    }
    return "error";
}

std::string confidence_name(Confidence confidence) {
    switch (confidence) {
    case Confidence::certain: return "machine-applicable";
    case Confidence::maybe: return "maybe-incorrect";
    case Confidence::placeholders: break;
    }
    return "has-placeholders";
}

std::optional<Format> format_of(std::string_view name) {
    constexpr std::array<std::pair<std::string_view, Format>, 6> formats{
        {{"text", Format::text},
         {"short", Format::brief},
         {"json", Format::json},
         {"sarif", Format::sarif},
         {"github", Format::github},
         {"junit", Format::junit}}};
    for (const auto& [known, format] : formats) {
        if (known == name) return format;
    }
    return {};
}

std::string report_head(Format format) {
    return format == Format::sarif ? sarif_head() : std::string();
}

std::string report_finding(Format format, const Finding& finding, bool first, bool colour) {
    switch (format) {
    case Format::text: return rendered(finding, colour) + "\n\n";
    case Format::brief: return brief(finding) + '\n';
    case Format::json: return json_finding(finding);
    case Format::sarif: return sarif_finding(finding, first);
    case Format::github: return annotation(finding) + '\n';
    case Format::junit: break;
    }
    return {};
}

std::string report_tail(Format format, const Summary& summary) {
    if (format == Format::json) return json_summary(summary);
    if (format == Format::sarif) return sarif_tail(summary);
    if (format == Format::github && summary.hidden > 0)
        return "::notice::" + std::string(more_errors) + "\n";
    const bool for_people = format == Format::text || format == Format::brief;
    if (for_people && summary.statistics) return table_of(*summary.statistics);
    return {};
}

std::string rendered(const Finding& finding, bool colour) {
    int last_line = finding.span.line;
    for (const Remark& remark : finding.remarks) last_line = std::max(last_line, remark.span.line);
    const Layout layout{last_line > 0 ? std::to_string(last_line).size() : 1, colour};
    const Style style = style_of(finding.severity);
    const std::string code = finding.code.empty() ? "" : '[' + finding.code + ']';
    std::string text = styled(style, severity_name(finding.severity) + code, colour) +
                       styled(Style::bold, ": " + printable(finding.message), colour) +
                       place_of(layout, finding.span, style);
    const bool excerpt_ends = finding.span.line > 0 && !finding.remarks.empty();
    if (excerpt_ends) text += '\n' + margin(layout, "", " |");
    for (const Remark& remark : finding.remarks) {
        text += remark_of(layout, remark);
        if (remark.severity == Severity::help) text += offer_of(finding);
    }
    return text;
}

std::string brief(const Finding& finding) {
    std::string text = location(finding.span);
    if (!text.empty()) text += ": ";
    text += severity_name(finding.severity) + ": " + printable(finding.message);
    if (!finding.code.empty()) text += " [" + finding.code + ']';
    return text;
}

}  // namespace orvex::frontend
