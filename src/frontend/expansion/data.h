// The data of a model: sets, aliases, parameters and levels, as the data files give them.
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

// A row of a data file: a name, elements, and mostly a value. What a row of CSV is depends on the
// model that it is for.
struct DataRow {
    enum class Kind : std::uint8_t { csv, set, alias, parameter, level };

    Kind kind = Kind::csv;
    bool is_empty = false;   // of JSON: a set or parameter that is there, without elements
    std::uint32_t text = 0;  // the file, in DataFiles::texts
    std::size_t offset = 0;  // where the row is, in bytes of that file
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

// The data files of a command line. It cannot be copied: rows refer to its texts.
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
    std::deque<std::string> unquoted;  // cells that differ from what the file has
    std::vector<DataRow> rows;

    // What the models have wanted so far, and what has been said of the files.
    std::set<Index> misfits;                                  // variables with other elements
    std::set<Index> used;                                     // names
    std::set<std::pair<std::uint32_t, std::size_t>> refused;  // rows: file and offset
    std::set<Index> unknown;                                  // elements that no set has
};

// Members in the order of the data. Elements are numbers in DataFiles::names.
struct DataSet {
    Tuples members;
};

// Values by their elements; where there is none, the value is 0.
struct DataValues {
    bool has_width = false;  // false while no value has shown how many elements there are
    Tuples places;
    std::vector<double> values;
};

// What the files say to one model. Names are in capitals.
struct Data {
    const NameTable* elements = nullptr;  // DataFiles::names, which must outlive this
    std::map<std::string, DataSet> sets;
    std::map<std::string, std::string> aliases;
    std::map<std::string, DataValues> parameters;
    std::map<std::string, DataValues> levels;
    std::set<std::string> unwanted;  // names that the model does not use
};

// The set of that name, or of that alias, or null.
const DataSet* find_set(const Data& data, const std::string& name);

// The value at a place, 0 where there is none.
double value_at(const DataValues& values, std::span<const Index> place);

// The level of a variable as it is printed, such as "Y.AGR" or "W"; null where the data have none.
const double* find_level(const Data& data, std::string_view printed);

}  // namespace orvex::frontend
