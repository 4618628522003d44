// What is named at a place of the text, and all places where it is named.
#pragma once

#include "frontend/abilities/document.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orvex::frontend {

enum class TargetKind {
    name,       // of a model: a variable, a report variable, or whatever else it declares
    host_name,  // of the host's program, with which all models of the file share it
    nest,       // of a block
};

struct Target {
    TargetKind kind;
    std::string name;        // in capitals
    Index model = no_index;  // not of a host's name
    Index block = no_index;  // of a nest
    Range place;             // where it is named at the offset
};

struct NamedPlace {
    Range range;
    Index model = no_index;  // no_index in the host's program
    Role role = Role::other;
    bool defines = false;   // declares the name, or is what definition_of() gives
    bool in_label = false;  // a set in a label such as "R.TL"; or a nest
};

// What is named at an offset, or just before it. Nothing for a word of the host's program that is
// a name of several models, or of none. Precondition: the document is read.
std::optional<Target> target_at(const Document& document, Offset offset);

// Where the name is declared. One that no model declares: its first place in the host's program;
// a nest: where its block's opening record opens it.
std::optional<Range> definition_of(const Document& document, const Target& target);

// All places of the name, in the order of the text. Words of the host's program are among them
// where they can mean nothing else: where no other model has a name like that of this model, and
// no model has one like that of the host.
std::vector<NamedPlace> places_of(const Document& document, const Target& target);

// Does the place give the name something: is it declared, made or owned there, does it have its
// block there, or does it receive a tax?
bool is_written_at(const NamedPlace& place);

// Is the name, in any case, declared by the model, or a variable of it?
bool owns_name(const Model& model, std::string_view name);

}  // namespace orvex::frontend
