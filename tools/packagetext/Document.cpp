// SPDX-License-Identifier: MIT
// Documents are read by people and compared line by line in version control, for which the library's own two forms
// won't do: one has everything on a line, the other each number on a line of its own. So the text is written here, a
// member on each line and a list of plain values on one. A path becomes one of the file system through UTF-8
// explicitly, since the usual way would take it for text in the system's code page; where names are bytes, a name that
// is no good UTF-8 stays what it is.

#include "packagetext/Document.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string_view>

#include "packagetext/ReplaceFile.h"
#include "platform/Files.h"

namespace packagetext {

namespace {

// A package has an object of its entries, and notes may be a little deeper than the rest.
constexpr ShapeLimits limits = {64, 1'000'000};

std::filesystem::path PathFromUtf8(const std::string& path) {
    return {std::u8string(path.begin(), path.end())};
}

/// "line 3, column 7: syntax error ..." out of the parser's message, which has a code in square brackets in front.
std::string DescribeParseError(const std::string& message) {
    constexpr std::string_view lead = "parse error at ";
    const std::size_t start = message.find(lead);
    if (start != std::string::npos) return message.substr(start + lead.size());
    const std::size_t bracket = message.find("] ");
    return bracket == std::string::npos ? message : message.substr(bracket + 2);
}

std::string TextOfValue(const Json& value) {
    return value.dump(-1, ' ', false, Json::error_handler_t::replace);
}

void WriteValue(std::ostream& out, const Json& value, std::size_t indent);

void WriteMembers(std::ostream& out, const Json& object, std::size_t indent) {
    const std::string margin(indent + 2, ' ');
    const char* separator = "{\n";
    for (const auto& member : object.items()) {
        out << separator << margin << TextOfValue(member.key()) << ": ";
        WriteValue(out, member.value(), indent + 2);
        separator = ",\n";
    }
    out << "\n" << std::string(indent, ' ') << "}";
}

void WriteElements(std::ostream& out, const Json& array, std::size_t indent) {
    const bool isPlain =
        std::none_of(array.begin(), array.end(), [](const Json& item) { return item.is_structured(); });
    const std::string separator = isPlain ? ", " : ",\n" + std::string(indent + 2, ' ');
    out << (isPlain ? "[" : "[\n" + std::string(indent + 2, ' '));
    for (std::size_t i = 0; i < array.size(); ++i) {
        if (i > 0) out << separator;
        WriteValue(out, array[i], indent + 2);
    }
    out << (isPlain ? "]" : "\n" + std::string(indent, ' ') + "]");
}

void WriteValue(std::ostream& out, const Json& value, std::size_t indent) {
    if (value.is_object() && !value.empty()) {
        WriteMembers(out, value, indent);
    } else if (value.is_array()) {
        WriteElements(out, value, indent);
    } else {
        out << TextOfValue(value);
    }
}

}  // namespace

bool ReadDocument(const std::string& path, Json& content, std::string& errorText) {
    std::string text;
    return ReadDocument(path, content, text, errorText);
}

bool ReadDocument(const std::string& path, Json& content, std::string& text, std::string& errorText) {
    content = Json();
    text.clear();
    std::ifstream file(PathFromUtf8(path), std::ios::binary);
    std::ostringstream bytes;
    if (file.is_open()) bytes << file.rdbuf();
    if (!file.is_open() || bytes.view().empty()) {
        errorText = path + (file.is_open() ? ": the file is empty or can't be read" : ": the file can't be opened");
        return false;
    }
    text = bytes.str();
    if (ParseDocument(text, content, errorText)) return true;
    errorText = path + ": " + errorText;
    return false;
}

bool ParseDocument(std::string_view text, Json& content, std::string& errorText) {
    if (!ParseJson(text, limits, content, errorText)) return false;
    if (content.is_object()) return true;
    content = Json();
    errorText = "a document is a JSON object";
    return false;
}

bool ParseJson(std::string_view text, const ShapeLimits& most, Json& content, std::string& errorText) {
    content = Json();
    if (!CheckShape(text, most, errorText)) return false;
    try {
        content = Json::parse(text);
        return true;
    } catch (const Json::exception& error) {
        errorText = DescribeParseError(error.what());
        return false;
    }
}

std::string TextOfDocument(const Json& content) {
    std::ostringstream text;
    WriteValue(text, content, 0);
    return text.str() + "\n";
}

bool WriteDocument(const std::string& path, const Json& content, std::string& errorText) {
    return ReplaceFile(reka::SystemFiles(), path, TextOfDocument(content), errorText);
}

}  // namespace packagetext
