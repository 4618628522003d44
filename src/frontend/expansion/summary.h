// How large a model is for the solver: the size of each of its blocks when printed.
#pragma once

#include "frontend/expansion/expand.h"

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace orvex::frontend {

// Assumed numbers of elements of sets, by their names in capitals.
using SetSizes = std::map<std::string, std::uint64_t>;

// The printed size of a block of the model: a block for each element, with entries and further
// fields.
struct BlockSize {
    std::string name;  // "$PROD:Y"
    int line = 0;      // in the file
    std::uint64_t blocks = 0;
    std::uint64_t entries = 0;
    std::uint64_t fields = 0;
};

struct ModelSize {
    std::string path;
    std::string model;
    int line = 0;           // of the line with $MODEL:
    bool is_bound = false;  // all conditions and guards are assumed to be true
    std::vector<BlockSize> blocks;
};

// The size of a model that has been prepared.
ModelSize size_of(const GeneratedModel& generated, const Expansion& expansion);

// An upper bound, with the given numbers of elements in the sets; a set without one has as many as
// the data have. False, with findings, if a set has neither, or the generator text cannot be read.
// Numbers too large to count stay at the maximum.
bool bound_size(const GeneratedModel& generated, DataFiles& files, const SetSizes& sizes,
                ModelSize& size, std::vector<Finding>& findings);

// As a table for people, and as a line of JSON.
std::string size_text(const ModelSize& size);
std::string size_json(const ModelSize& size);

}  // namespace orvex::frontend
