// The two JSON formats: one object per line (docs/findings.schema.json), and SARIF 2.1.0.
#pragma once

#include "frontend/findings/finding.h"
#include "frontend/findings/report.h"

#include <string>

namespace orvex::frontend {

// Both with their line end.
std::string json_finding(const Finding& finding);
std::string json_summary(const Summary& summary);

std::string sarif_head();
std::string sarif_finding(const Finding& finding, bool first);
std::string sarif_tail(const Summary& summary);

}  // namespace orvex::frontend
