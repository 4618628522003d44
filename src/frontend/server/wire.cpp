#include "frontend/server/wire.h"

#include "frontend/base/bytes.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <nlohmann/json.hpp>
#include <system_error>
#include <utility>

namespace orvex::frontend {

namespace {

constexpr std::string_view head_end = "\r\n\r\n";
constexpr std::string_view length_field = "CONTENT-LENGTH:";
constexpr std::size_t longest_head = 4096;
constexpr std::size_t longest_message = std::size_t{1} << 30U;

bool begins_with_length(std::string_view line) {
    std::string start(line.substr(0, length_field.size()));
    make_upper(start);
    return start == length_field;
}

Json message_with(std::string_view member, Json value) {
    return {{"jsonrpc", "2.0"}, {std::string(member), std::move(value)}};
}

std::optional<std::size_t> length_of(std::string_view head) {
    for (const std::string_view line : lines_of(head)) {
        if (!begins_with_length(line)) continue;
        const std::string_view value = trimmed(line.substr(length_field.size()));
        std::size_t length = 0;
        const auto [stop, error] =
            std::from_chars(value.data(), value.data() + value.size(), length);
        const bool is_number = error == std::errc() && stop == value.data() + value.size();
        if (is_number && length <= longest_message) return length;
    }
    return {};
}

}  // namespace

void MessageReader::feed(std::string_view bytes) {
    if (start_ > bytes_.size() / 2) {
        bytes_.erase(0, start_);
        start_ = 0;
    }
    bytes_ += bytes;
}

void MessageReader::skip_to_head(std::size_t from) {
    const std::string_view text = pending();
    for (std::size_t at = from; (at = text.find_first_of("Cc", at)) != std::string_view::npos;
         ++at) {
        if (!begins_with_length(text.substr(at))) continue;
        start_ += at;
        return;
    }
    start_ = bytes_.size();
}

std::optional<std::string> MessageReader::next() {
    const std::string_view text = pending();
    const std::size_t end = text.substr(0, longest_head).find(head_end);
    if (end == std::string_view::npos && text.size() < longest_head) return {};
    const auto length = end == std::string_view::npos ? std::optional<std::size_t>()
                                                      : length_of(text.substr(0, end));
    if (!length) {
        skip_to_head(end == std::string_view::npos ? 1 : end);
        throw RequestError{parse_error, "a message has no valid Content-Length"};
    }
    const std::size_t begin = end + head_end.size();
    if (text.size() - begin < *length) return {};
    std::string message(text.substr(begin, *length));
    start_ += begin + *length;
    return message;
}

std::string framed(const Json& message) {
    const std::string body = message.dump(-1, ' ', false, Json::error_handler_t::replace);
    return "Content-Length: " + std::to_string(body.size()) + std::string(head_end) + body;
}

Json answer_to(const Json& id, Json result) {
    Json message = message_with("id", id);
    message["result"] = std::move(result);
    return message;
}

Json error_answer_to(const Json& id, const RequestError& error) {
    Json message = message_with("id", id);
    message["error"] = {{"code", error.code}, {"message", error.message}};
    return message;
}

Json notification(std::string_view method, Json params) {
    Json message = message_with("method", std::string(method));
    message["params"] = std::move(params);
    return message;
}

Json request(std::int64_t id, std::string_view method, Json params) {
    Json message = notification(method, std::move(params));
    message["id"] = id;
    return message;
}

}  // namespace orvex::frontend
