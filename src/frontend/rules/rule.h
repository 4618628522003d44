// Rules: what may be wrong with a model that the translator accepts, each a function over a file
// and one of its models. A rule says nothing about a place that has an error, or that an error may
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

// A model of a file, as a rule sees it. The file is there even where it has no model.
struct Subject {
    const Source& source;
    const Model* model;     // null for a rule of the file as a whole
    const Facts* facts;     // about the model
    std::string_view code;  // of the rule
};

// Findings of the scope `comments` come of all others and of the comments that allow some of them;
// those of the scope `data` come of data files, and only where these are read.
enum class Scope { file, model, comments, data };

struct Rule {
    std::string_view code;  // of docs/messages.md, where its text is explained
    Severity level;         // unless --warn says otherwise; that of an error is fixed
    Scope scope;
    // Null for the scopes `comments` and `data`.
    void (*check)(const Subject& subject, std::vector<Finding>& findings);
};

// All rules, in the order in which their findings on one line are shown. A code that is about lines
// in models and outside has two, one after the other.
std::span<const Rule> rules();

// Runs all rules of a file as a whole.
void run_file_rules(const Source& source, std::vector<Finding>& findings);

// Runs all rules of models over one of them. `host` is the host's text in the file.
void run_model_rules(const Source& source, const HostText& host, const Model& model,
                     std::vector<Finding>& findings);

}  // namespace orvex::frontend
