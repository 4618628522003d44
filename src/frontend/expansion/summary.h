// How large a model is for the solver: what each of its blocks becomes.
#pragma once

#include "frontend/expansion/expand.h"

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace orvex::frontend {

// Numbers of elements that are assumed for sets, by their names in capitals.
using SetSizes = std::map<std::string, std::uint64_t>;

// What a block of the model becomes: a block for each element, with entries and further fields.
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
    int line = 0;           // of $MODEL:
    bool is_bound = false;  // all conditions and guards are assumed to be true
    std::vector<BlockSize> blocks;
};

// The size of a model that has been prepared.
ModelSize size_of(const GeneratedModel& generated, const Expansion& expansion);

// An upper bound, with so many elements in the sets; for sets without a number as many as the data
// have. False, with findings, where there is neither, or the generator text cannot be read.
// Numbers too large to be counted stay at the largest one.
bool bound_size(const GeneratedModel& generated, DataFiles& files, const SetSizes& sizes,
                ModelSize& size, std::vector<Finding>& findings);

// As a table for people, and as a line of JSON.
std::string size_text(const ModelSize& size);
std::string size_json(const ModelSize& size);

}  // namespace orvex::frontend
