// What is wrong with a row of a report.
#include "frontend/base/spelling.h"
#include "frontend/rules/edits.h"
#include "frontend/rules/error_place.h"
#include "frontend/rules/error_texts.h"
#include "notation/labels.h"

#include <string>
#include <string_view>
#include <vector>

namespace orvex::frontend {

namespace {

using notation::Fault;

// A field as it is read, without its condition: "O:PX".
std::string field_text(const ErrorCase& at, const FieldParts& parts) {
    return as_read(at, parts.label) + ":" + as_read(at, parts.value);
}

// The field that names the report variable: the first one with the right label.
FieldParts named_field(const ErrorCase& at) {
    const Tree& tree = at.source.tree;
    const Index record = at.error.record;
    for (Index field = tree.records[record].field; field < tree.records[record + 1].field;
         ++field) {
        const FieldParts parts = parts_of(tree, record, field);
        if (as_read(at, parts.label) == notation::report_label) return parts;
    }
    return {};
}

bool is_report_label(const std::string& label) { return label == notation::report_label; }

std::vector<std::string> labels_for(Fault place) {
    std::vector<std::string> labels;
    for (const notation::Label& label : notation::labels()) {
        const bool fits = place == Fault::repblk_second ? label.reported : label.owns;
        if (fits) labels.emplace_back(label.text);
    }
    return labels;
}

}  // namespace

void say_report_start(const ErrorCase& at, Said& said) {
    const FieldParts named = named_field(at);
    said.variant = "label";
    said.values["label"] = as_read(at, at.error.place);
    if (named.label.empty()) return;
    said.help = "field";
    said.values["field"] = field_text(at, named);
}

void say_nothing_reported(const ErrorCase& at, Said& said) {
    const FieldParts named = named_field(at);
    if (named.value.empty()) return;
    said.variant = "name";
    said.values["name"] = as_read(at, named.value);
}

void say_reported_condition(const ErrorCase& at, Said& said) {
    const FieldParts parts = parts_at(at);
    const FieldParts named = named_field(at);
    said.values["label"] = as_read(at, parts.label);
    if (!parts.has_condition) {
        said.variant = "label";
        return;
    }
    if (named.value.empty()) return;
    said.variant = "field";
    said.values["field"] = field_text(at, parts);
    said.values["named"] = field_text(at, named);
    said.place = {at.error.place.begin, parts.all.end};
    const std::string condition(text_in(at, said.place));
    const bool is_before = named.all.end <= parts.all.begin;
    if (named.has_condition || parts.extra.count > 0 || !is_before) return;
    said.fix =
        Fix{Confidence::maybe,
            {{named.all.end, named.all.end, condition}, {said.place.begin, said.place.end, ""}}};
}

void say_report_field(const ErrorCase& at, Said& said) {
    const Range label = at.error.place;
    said.place = {label.begin, label.end + 1};
    if (is_report_label(at.error.text)) {
        said.variant = "line";
        said.fix = Fix{Confidence::certain, {breaking_row(at, label.begin)}};
        return;
    }
    const std::string near = nearest(at.error.text, labels_for(at.error.fault));
    if (near.empty()) return;
    said.meant = near + ":";
    said.fix = Fix{Confidence::maybe, {replacing(label, cased_like(text_in(at, label), near))}};
}

void say_extra_field(const ErrorCase& at, Said& said) {
    const FieldParts parts = parts_at(at);
    said.variant = "field";
    said.values["field"] = field_text(at, parts);
    said.place = {parts.label.begin, parts.all.end};
    if (is_report_label(as_read(at, parts.label)))
        said.fix = Fix{Confidence::certain, {breaking_row(at, parts.label.begin)}};
}

}  // namespace orvex::frontend
