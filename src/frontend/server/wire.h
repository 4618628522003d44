// The transport of messages: framed with their length, as JSON-RPC requires.
#pragma once

#include <cstddef>
#include <cstdint>
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>
#include <string_view>

namespace orvex::frontend {

using Json = nlohmann::json;

// Why a request is answered with an error.
struct RequestError {
    int code = 0;
    std::string message;
};

// The error codes that this server uses.
constexpr int parse_error = -32700;
constexpr int invalid_request = -32600;
constexpr int method_not_found = -32601;
constexpr int invalid_params = -32602;
constexpr int internal_error = -32603;
constexpr int server_not_initialized = -32002;
constexpr int request_cancelled = -32800;
constexpr int request_failed = -32803;

// Assembles messages from bytes as they arrive.
class MessageReader {
  public:
    void feed(std::string_view bytes);

    // The next whole message; nothing if it is not complete yet. Throws RequestError for a head
    // without a usable length; then reading continues at the next head.
    std::optional<std::string> next();

  private:
    std::string_view pending() const { return std::string_view(bytes_).substr(start_); }
    void skip_to_head(std::size_t from);

    std::string bytes_;
    std::size_t start_ = 0;  // of the bytes not yet taken
};

// A message with its head.
std::string framed(const Json& message);

Json answer_to(const Json& id, Json result);
Json error_answer_to(const Json& id, const RequestError& error);
Json notification(std::string_view method, Json params);
Json request(std::int64_t id, std::string_view method, Json params);

}  // namespace orvex::frontend
