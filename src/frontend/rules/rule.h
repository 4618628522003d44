// Rules: what may be wrong with a model that the translator accepts. Each is a function over a file
// and one of its models. A rule is silent about a place that has an error, or that an error may
// have changed.
#pragma once

#include "frontend/findings/finding.h"
#include "frontend/model/model.h"
#include "frontend/syntax/source.h"

#include <span>
#include <string_view>
#include <vector>

namespace orvex::frontend {

struct Facts;
struct HostText;

// A model of a file, as a rule sees it. There is a file even if it has no model.
struct Subject {
    const Source& source;
    const Model* model;     // null for a rule about the whole file
    const Facts* facts;     // about the model
    std::string_view code;  // of the rule
};

// Findings of the scope `comments` depend on all others and on the comments that allow some of
// them; those of the scope `data` come from data files, and only if these are read.
enum class Scope { file, model, comments, data };

struct Rule {
    std::string_view code;  // of docs/messages.md, which explains it
    Severity level;         // unless --warn changes it; that of an error is fixed
    Scope scope;
    // Null for the scopes `comments` and `data`.
    void (*check)(const Subject& subject, std::vector<Finding>& findings);
};

// All rules, in the order in which their findings on one line are shown. A code about lines both in
// models and elsewhere has two consecutive rules.
std::span<const Rule> rules();

// Runs all rules about the whole file.
void run_file_rules(const Source& source, std::vector<Finding>& findings);

// Runs all rules about models on one of them. `host` is the host's text in the file.
void run_model_rules(const Source& source, const HostText& host, const Model& model,
                     std::vector<Finding>& findings);

}  // namespace orvex::frontend
