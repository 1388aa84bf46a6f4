// SPDX-License-Identifier: MIT
// The text is walked through once for its shape, and only then made a value. The parser would take the last of two
// members of one name and drop the other without a word, which is what a merge of two branches leaves; and it would
// build a value of any depth, which whatever copies it later walks by recursion.

#include "ParseReadable.h"

#include <algorithm>
#include <set>
#include <vector>

namespace rekatool {

namespace {

// The form itself nests 7 deep and has objects of up to 13 members.
constexpr std::size_t deepestNesting = 16;
constexpr std::size_t mostMembers = 32;

/// Stops at the first thing that the form never has. Faults of the syntax are left to the parser, which words them.
class CShapeCheck : public nlohmann::json_sax<Json> {
public:
    bool start_object(std::size_t) override { return Open(); }
    bool start_array(std::size_t) override { return Open(); }
    bool end_object() override { return Close(); }
    bool end_array() override { return Close(); }
    bool key(std::string& name) override {
        std::set<std::string>& names = open.back();
        if (!names.insert(name).second) return Stop("the member \"" + name + "\" is there twice in one object");
        return names.size() <= mostMembers || Stop("there is an object with too many members");
    }
    bool null() override { return true; }
    bool boolean(bool) override { return true; }
    bool number_integer(number_integer_t) override { return true; }
    bool number_unsigned(number_unsigned_t) override { return true; }
    bool number_float(number_float_t, const std::string&) override { return true; }
    bool string(std::string&) override { return true; }
    bool binary(Json::binary_t&) override { return true; }
    bool parse_error(std::size_t, const std::string&, const nlohmann::detail::exception&) override { return false; }

    std::string fault;  // empty for none

private:
    bool Open() {
        open.emplace_back();
        return open.size() <= deepestNesting || Stop("the text is nested too deeply");
    }
    bool Close() {
        open.pop_back();
        return true;
    }
    bool Stop(const std::string& reason) {
        fault = reason;
        return false;
    }

    std::vector<std::set<std::string>> open;  // the members so far of each object that isn't closed; none of a list
};

}  // namespace

bool IsReadable(std::span<const std::uint8_t> bytes) {
    constexpr std::uint8_t byteOrderMark[] = {0xEF, 0xBB, 0xBF};
    if (bytes.size() >= 3 && std::equal(std::begin(byteOrderMark), std::end(byteOrderMark), bytes.begin())) {
        bytes = bytes.subspan(3);
    }
    const auto isBlank = [](std::uint8_t byte) { return byte == ' ' || byte == '\t' || byte == '\r' || byte == '\n'; };
    const auto first = std::find_if_not(bytes.begin(), bytes.end(), isBlank);
    return first != bytes.end() && *first == '{' && std::find(first, bytes.end(), 0) == bytes.end();
}

bool ParseReadable(std::span<const std::uint8_t> bytes, Json& content, std::string& errorText) {
    try {
        CShapeCheck shape;
        Json::sax_parse(bytes.begin(), bytes.end(), &shape);
        errorText = shape.fault;
        if (!errorText.empty()) return false;
        content = Json::parse(bytes.begin(), bytes.end());
        return true;
    } catch (const Json::exception& error) {
        errorText = error.what();
        return false;
    }
}

}  // namespace rekatool
