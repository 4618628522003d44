// What is named at a place in the text, and all places where it is named.
#pragma once

#include "frontend/abilities/document.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orvex::frontend {

enum class TargetKind {
    name,       // of a model: a variable, a report variable, or anything else it declares
    host_name,  // of the host program, shared by all models of the file
    nest,       // of a block
};

struct Target {
    TargetKind kind;
    std::string name;        // in capitals
    Index model = no_index;  // unless it is a host name
    Index block = no_index;  // of a nest
    Range place;             // the occurrence at the offset
};

struct NamedPlace {
    Range range;
    Index model = no_index;  // no_index in the host program
    Role role = Role::other;
    bool defines = false;   // declares the name, or is the result of definition_of()
    bool in_label = false;  // a set in a label such as "R.TL"; or a nest
};

// What is named at an offset, or ends there. Nothing for a word of the host program that is a name
// in several models, or in none. Precondition: the document has been read.
std::optional<Target> target_at(const Document& document, Offset offset);

// Where the name is declared. For a name that no model declares: its first place in the host
// program. For a nest: where the opening record of its block introduces it.
std::optional<Range> definition_of(const Document& document, const Target& target);

// All places of the name, in the order of the text. Words of the host program are included if they
// cannot mean anything else: no other model uses the same name as this model, and no model has a
// name of its own like a host name.
std::vector<NamedPlace> places_of(const Document& document, const Target& target);

// Does the place give the name something: is it declared, made or owned there, does its block begin
// there, or does it receive a tax?
bool is_written_at(const NamedPlace& place);

// Is the name (in any case) declared by the model, or one of its variables?
bool owns_name(const Model& model, std::string_view name);

}  // namespace orvex::frontend
