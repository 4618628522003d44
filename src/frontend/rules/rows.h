// The rows of a model: an entry of a production or demand block with all its lines, or the block's
// opening record. An entry that begins with a guard adds its fields to the previous row.
#pragma once

#include "frontend/model/model.h"
#include "frontend/syntax/source.h"

#include <span>
#include <string_view>
#include <vector>

namespace orvex::frontend {

struct Row {
    const Field* owner;  // the keyword and the name of its block
    const notation::Keyword* keyword;
    const Entry* entry = nullptr;  // null for an opening record
    Index first_field = 0;         // in Rows::fields
    Index field_count = 0;         // all fields except the first
    Index own_count = 0;           // up to one whose label begins an entry of its own
    bool outside = false;          // an option has ended its block
    bool indented = false;         // "$" or "+" begins its line, but not in column 1
    bool stray = false;            // its label begins no entry of its block
    bool unclear = false;          // a line of it cannot be read, or is read as something else
    bool lost_plus = false;        // stray, and likely to continue the previous row
};

struct Rows {
    std::vector<Row> rows;
    std::vector<const Field*> fields;
    std::vector<const Field*> unclear_owners;  // of blocks with a line that cannot be read
};

// Both arguments must outlive the rows.
Rows read_rows(const Source& source, const Model& model);

std::span<const Field* const> fields_of(const Rows& rows, const Row& row);
std::span<const Field* const> own_fields_of(const Rows& rows, const Row& row);

// The field whose label begins an entry of its own, or null.
const Field* joined_field(const Rows& rows, const Row& row);

// Is the field meaningless without a value? In an opening record every field is.
bool needs_value(const Row& row, const Field& field);

// The first field of a row: for an opening record, the keyword with its name.
const Field& head_of(const Row& row);

// Do the row and the previous one begin with a label of the other kind of block?
bool is_after_other(const std::vector<Row>& rows, std::size_t row);

// The economic meaning of the label of a field.
notation::Meaning meaning_of(const Field& field);

// The quantity of a row, or null.
const Field* quantity_of(const Rows& rows, const Row& row);

// Does the field name an output, input, demand or endowment, and so begin an entry? Without a name
// it is a nest.
bool begins_entry(const Field& field);

// Does a line begin with "+" or "$", but not in column 1?
bool is_indented(std::string_view line);

// Is the "+" that continues an entry joined to the label, and so part of it?
bool has_joined_plus(const Source& source, const Field& field);

// Does the label contain a non-ASCII dash or blank? Then another label is meant.
bool has_lookalike(const Source& source, const Field& field);

// Labels that are elements of a set are made when the host's program runs.
bool is_made_by_host(const Source& source, const Field& field);

// Is it a block with entries, that is, a production or a demand?
bool is_function(const Block& block);

}  // namespace orvex::frontend
