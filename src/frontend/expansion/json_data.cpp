#include "frontend/base/bytes.h"
#include "frontend/base/spelling.h"
#include "frontend/expansion/data_files.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <iterator>
#include <nlohmann/json.hpp>
#include <string>
#include <utility>

namespace orvex::frontend {

namespace {

using Json = nlohmann::json;
using Kind = DataRow::Kind;

// More elements than any name of a model has.
constexpr std::size_t most_elements = 20;

// Iterates over the bytes of a file; the position is also stored outside the iterator.
class Bytes {
  public:
    using iterator_category = std::input_iterator_tag;
    using value_type = char;
    using difference_type = std::ptrdiff_t;
    using pointer = const char*;
    using reference = const char&;

    Bytes(const char* at, const char** read) : at_(at), read_(read) {}

    reference operator*() const { return *at_; }
    Bytes& operator++() {
        *read_ = ++at_;
        return *this;
    }
    bool operator==(const Bytes& other) const { return at_ == other.at_; }

  private:
    const char* at_;
    const char** read_;
};

const std::vector<std::string>& section_names() {
    static const std::vector<std::string> names = {"sets", "aliases", "parameters", "levels"};
    return names;
}

constexpr Kind section_kinds[] = {Kind::set, Kind::alias, Kind::parameter, Kind::level};

// Takes the parts of a file as they are read; a false result ends the reading.
class Taker : public nlohmann::json_sax<Json> {
  public:
    explicit Taker(DataFiles& files)
        : files_(files),
          text_(static_cast<std::uint32_t>(files.texts.size()) - 1),
          begin_(files.texts.back().bytes.data()),
          read_(begin_) {}

    const char** read() { return &read_; }

    std::string_view fault() const { return fault_; }
    const Values& values() const { return values_; }
    std::size_t fault_offset() const { return fault_offset_; }

    bool null() override { return refuse("value", "null"); }
    bool boolean(bool value) override { return refuse("value", value ? "true" : "false"); }
    bool number_integer(number_integer_t value) override {
        return number(static_cast<double>(value), std::to_string(value));
    }
    bool number_unsigned(number_unsigned_t value) override {
        return number(static_cast<double>(value), std::to_string(value));
    }
    bool number_float(number_float_t value, const string_t& text) override {
        return number(value, text);
    }
    bool string(string_t& text) override {
        if (depth_ == 2 && kind_ == Kind::alias) return alias(text);
        if (array_ > 0) return element(text);
        return refuse(depth_ > 1 && kind_ != Kind::set ? "value" : "shape", '"' + text + '"');
    }
    bool binary(binary_t& /*value*/) override { return refuse("value", ""); }

    bool start_object(std::size_t /*size*/) override {
        const bool has_elements = kind_ == Kind::parameter || kind_ == Kind::level;
        if (array_ > 0 || (depth_ > 1 && !has_elements)) return refuse("shape", "{");
        if (++depth_ > most_elements) return refuse("shape", "{");
        if (depth_ == 3) add_empty();
        return true;
    }
    bool key(string_t& name) override {
        if (depth_ == 1) return section(name);
        const std::string_view fault = fault_of_name(name);
        if (!fault.empty()) return refuse(fault, name);
        keys_.resize(depth_ - 2);
        keys_.push_back(files_.names.add(trimmed(name)));
        return true;
    }
    bool end_object() override {
        --depth_;
        return true;
    }

    bool start_array(std::size_t /*size*/) override {
        if (depth_ != 2 || kind_ != Kind::set || array_ == 2) return refuse("shape", "[");
        if (++array_ == 1) add_empty();
        keys_.resize(1);
        return true;
    }
    bool end_array() override {
        const bool is_member = array_ == 2;
        --array_;
        if (is_member && keys_.size() == 1) return refuse("shape", "[]");
        if (is_member) add_row();
        return true;
    }

    bool parse_error(std::size_t /*position*/, const std::string& /*token*/,
                     const Json::exception& error) override {
        // "[json.exception.parse_error.101] parse error at line 1, column 2: what is wrong"
        std::string_view what = error.what();
        what.remove_prefix(std::min(what.find("] "), what.size() - 2) + 2);
        if (what.starts_with("parse error")) what.remove_prefix(what.find(": ") + 2);
        return refuse("json", what);
    }

  private:
    // The offset of the last byte read.
    std::size_t offset() const {
        return read_ == begin_ ? 0 : static_cast<std::size_t>(read_ - begin_) - 1;
    }

    bool refuse(std::string_view variant, std::string_view text) {
        fault_ = variant;
        values_["text"] = text;
        fault_offset_ = offset();
        return false;
    }

    bool section(const std::string& name) {
        const auto& names = section_names();
        const auto found = std::find(names.begin(), names.end(), name);
        if (found == names.end()) {
            values_["near"] = nearest_word(name, names);
            return refuse("section", name);
        }
        kind_ = section_kinds[found - names.begin()];
        return true;
    }

    DataRow new_row() {
        DataRow row;
        row.kind = kind_;
        row.text = text_;
        row.offset = offset();
        row.name = keys_.front();
        row.first_cell = static_cast<Index>(files_.cells.size());
        return row;
    }

    void add_empty() {
        DataRow row = new_row();
        row.is_empty = true;
        files_.rows.push_back(row);
    }

    // Adds a row with the elements after the name.
    void add_row(double value = 0) {
        DataRow row = new_row();
        row.cell_count = static_cast<Index>(keys_.size()) - 1;
        row.value = value;
        files_.cells.insert(files_.cells.end(), keys_.begin() + 1, keys_.end());
        files_.rows.push_back(row);
    }

    bool number(double value, const std::string& text) {
        if (array_ > 0) return element(text);
        const bool has_value = kind_ == Kind::parameter || kind_ == Kind::level;
        if (depth_ < 2 || !has_value) return refuse("shape", text);
        if (!std::isfinite(value)) return refuse("value", text);
        keys_.resize(depth_ - 1);
        add_row(value);
        return true;
    }

    bool element(const std::string& text) {
        const std::string_view fault = fault_of_name(text);
        if (!fault.empty()) return refuse(fault, text);
        if (keys_.size() > most_elements) return refuse("shape", text);
        keys_.push_back(files_.names.add(trimmed(text)));
        if (array_ == 2) return true;
        add_row();
        keys_.resize(1);
        return true;
    }

    bool alias(const std::string& text) {
        const std::string_view fault = fault_of_name(text);
        if (!fault.empty()) return refuse(fault, text);
        keys_.push_back(files_.names.add(trimmed(text)));
        add_row();
        return true;
    }

    DataFiles& files_;
    std::uint32_t text_;
    const char* begin_;
    const char* read_;
    std::size_t depth_ = 0;    // of objects
    int array_ = 0;            // of arrays
    Kind kind_ = Kind::set;    // of the section
    std::vector<Index> keys_;  // the name and elements that lead to the current value
    std::string_view fault_;
    Values values_;
    std::size_t fault_offset_ = 0;
};

}  // namespace

bool read_json_data(DataFiles& files, std::vector<Finding>& findings) {
    const std::string& bytes = files.texts.back().bytes;
    Taker taker(files);
    const char* ignored = nullptr;
    const Bytes begin(bytes.data(), taker.read());
    const Bytes end(bytes.data() + bytes.size(), &ignored);
    if (Json::sax_parse(begin, end, &taker)) return true;
    findings.push_back(data_finding(files, static_cast<std::uint32_t>(files.texts.size()) - 1,
                                    taker.fault_offset(), taker.values(), taker.fault()));
    return false;
}

}  // namespace orvex::frontend
