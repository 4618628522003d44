#include "frontend/findings/report.h"

namespace orvex::frontend {

std::string severity_name(Severity) { return "error"; }
std::optional<Format> format_of(std::string_view) { return {}; }
std::string report_head(Format) { return {}; }
std::string report_finding(Format, const Finding&, bool, bool) { return {}; }
std::string report_tail(Format, const Summary&) { return {}; }
std::string rendered(const Finding&, bool) { return {}; }
std::string brief(const Finding&) { return {}; }

}  // namespace orvex::frontend
