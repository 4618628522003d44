// The data of a model: sets, aliases, parameters and levels, as given by the data files.
#pragma once

#include "frontend/expansion/tuples.h"
#include "frontend/model/names.h"
#include "frontend/syntax/tree.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <map>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace orvex::frontend {

// A row of a data file: a name, elements, and usually a value. The meaning of a CSV row depends on
// the model that it is for.
struct DataRow {
    enum class Kind : std::uint8_t { csv, set, alias, parameter, level };

    Kind kind = Kind::csv;
    bool is_empty = false;   // of JSON: a set or parameter that is present but has no elements
    std::uint32_t text = 0;  // the file, in DataFiles::texts
    std::size_t offset = 0;  // of the row, in bytes of that file
    Index name = 0;          // in DataFiles::names
    Index first_cell = 0;    // in DataFiles::cells: the elements, without the last cell of CSV
    Index cell_count = 0;
    std::string_view last;  // of CSV: the last cell
    double value = 0;       // of JSON
};

struct DataText {
    std::string path;
    std::string bytes;
};

// The data files of a command line. They cannot be copied: rows refer to their texts.
struct DataFiles {
    DataFiles() = default;
    DataFiles(const DataFiles&) = delete;
    DataFiles(DataFiles&&) = delete;
    DataFiles& operator=(const DataFiles&) = delete;
    DataFiles& operator=(DataFiles&&) = delete;
    ~DataFiles() = default;

    std::deque<DataText> texts;
    NameTable names;                   // of sets, parameters and elements, in capitals
    std::vector<Index> cells;          // elements of rows, in `names`
    std::deque<std::string> unquoted;  // cells that differ from the text of the file
    std::vector<DataRow> rows;

    // The names that models have needed so far, and the findings about the files so far.
    std::set<Index> misfits;                                  // variables with different elements
    std::set<Index> used;                                     // names
    std::set<std::pair<std::uint32_t, std::size_t>> refused;  // rows: file and offset
    std::set<Index> unknown;                                  // elements that are in no set
};

// Members in the order of the data. Elements are numbers in DataFiles::names.
struct DataSet {
    Tuples members;
};

// Values by their elements; a missing value is 0.
struct DataValues {
    bool has_width = false;  // false until a value has shown how many elements there are
    Tuples places;
    std::vector<double> values;
};

// The data of the files for one model. Names are in capitals.
struct Data {
    const NameTable* elements = nullptr;  // DataFiles::names, which must outlive this
    std::map<std::string, DataSet> sets;
    std::map<std::string, std::string> aliases;
    std::map<std::string, DataValues> parameters;
    std::map<std::string, DataValues> levels;
    std::set<std::string> unwanted;  // names that the model does not use
};

// The set with that name or alias, or null.
const DataSet* find_set(const Data& data, const std::string& name);

// The value at a place, 0 if there is none.
double value_at(const DataValues& values, std::span<const Index> place);

// The level of a variable as printed, such as "Y.AGR" or "W"; null if the data have none.
const double* find_level(const Data& data, std::string_view printed);

}  // namespace orvex::frontend
