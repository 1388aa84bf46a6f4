// SPDX-License-Identifier: MIT
// Includes are read as text: a line that begins with #include and a quoted path. A path is looked for beside the file
// and below src/, as the compilers do; what is found in neither place is made by the build and counts for nothing.

#include "floors/FloorPlan.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <optional>
#include <regex>
#include <set>
#include <utility>

namespace floors {

namespace {

namespace fs = std::filesystem;

/// The words of `text`, which blanks, commas, colons and quotes separate.
std::vector<std::string> SplitWords(const std::string& text) {
    static const std::regex word("[^ ,:\"`\r\n]+");
    return {std::sregex_token_iterator(text.begin(), text.end(), word), {}};
}

/// A folder called win or posix belongs to the floor it lies in, unless it is a floor of its own; outside the house
/// every folder belongs to the one it lies in.
std::string FloorOf(const fs::path& folder, const std::set<std::string>& folders) {
    for (fs::path at = folder; !at.empty(); at = at.parent_path()) {
        if (folders.contains(at.generic_string())) return at.generic_string();
        if (*at.begin() == "src" && at.filename() != "win" && at.filename() != "posix") break;
    }
    return folder.generic_string();
}

bool IsSource(const fs::path& file) {
    return file.extension() == ".h" || file.extension() == ".cpp" || file.extension() == ".y";
}

class CIncludeReader {
public:
    CIncludeReader(const fs::path& repository, const std::vector<Floor>& table, const std::vector<Floor>& companions)
        : root(repository) {
        for (const Floor& floor : table) AddRow("src/" + floor.folder, floor.below);
        for (const Floor& companion : companions) AddRow(companion.folder, companion.below);
    }

    void Read() {
        for (const char* const top : {"src", "tools", "examples", "bench", "fuzz", "include", "python"}) {
            if (!fs::exists(root / top)) continue;
            for (const fs::directory_entry& entry : fs::recursive_directory_iterator(root / top)) {
                if (entry.is_regular_file() && IsSource(entry.path())) ReadFile(fs::relative(entry.path(), root));
            }
        }
        std::sort(forbidden.begin(), forbidden.end());
    }

    /// After `Read`.
    const std::vector<std::string>& Forbidden() const { return forbidden; }
    std::vector<std::string> Unused() const {
        std::vector<std::string> unused;
        for (const auto& [folder, row] : allowed) {
            for (const std::string& below : row) {
                if (!used.contains({folder, below})) unused.push_back(folder + " includes nothing of " + below);
            }
        }
        return unused;
    }

private:
    void AddRow(const std::string& folder, const std::vector<std::string>& below) {
        folders.insert(folder);
        std::set<std::string>& row = allowed[folder];
        for (const std::string& name : below) row.insert(fs::exists(root / "src" / name) ? "src/" + name : name);
    }

    void ReadFile(const fs::path& file) {
        static const std::regex include("(?:^|\n)[ \t]*#[ \t]*include[ \t]*\"([^\"]+)\"");
        const std::string text = ReadText(root / file);
        for (std::sregex_iterator at(text.begin(), text.end(), include), end; at != end; ++at) {
            const std::optional<fs::path> target = Resolve(file, (*at)[1].str());
            if (target) Compare(file, *target);
        }
    }

    std::optional<fs::path> Resolve(const fs::path& file, const std::string& written) const {
        for (const fs::path& folder : {file.parent_path(), fs::path("src"), fs::path("src/platform/posix"),
                                       fs::path("tools"), fs::path("examples/simulator"), fs::path()}) {
            const fs::path candidate = (folder / written).lexically_normal();
            if (fs::exists(root / candidate)) return candidate;
        }
        return std::nullopt;
    }

    void Compare(const fs::path& file, const fs::path& target) {
        const std::string from = FloorOf(file.parent_path(), folders);
        const std::string to = FloorOf(target.parent_path(), folders);
        if (from == to) return;
        const auto row = allowed.find(from);
        used.insert({from, to});
        if (row != allowed.end() && row->second.contains(to)) return;
        forbidden.push_back(file.generic_string() + " includes " + target.generic_string());
    }

    const fs::path root;
    std::set<std::string> folders;
    std::map<std::string, std::set<std::string>> allowed;
    std::set<std::pair<std::string, std::string>> used;
    std::vector<std::string> forbidden;
};

}  // namespace

std::string ReadText(const fs::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(stream), {});
}

std::vector<Floor> ReadTable(const fs::path& file, const std::string& name) {
    const std::string text = ReadText(file);
    const std::size_t start = text.find("set(" + name);
    if (start == std::string::npos) return {};
    const std::string list = text.substr(start, text.find(')', start) - start);
    static const std::regex rowPattern("\"([^\":]+):([^\"]*)\"");
    std::vector<Floor> rows;
    for (std::sregex_iterator at(list.begin(), list.end(), rowPattern), end; at != end; ++at) {
        rows.push_back({(*at)[1].str(), SplitWords((*at)[2].str())});
    }
    return rows;
}

std::vector<Floor> ReadDrawing(const fs::path& document) {
    const std::string text = ReadText(document);
    static const std::regex rowPattern("(?:^|\n)\\| `([a-z/]+)/` \\|([^|]*)\\|");
    std::vector<Floor> rows;
    for (std::sregex_iterator at(text.begin(), text.end(), rowPattern), end; at != end; ++at) {
        rows.push_back({(*at)[1].str(), SplitWords((*at)[2].str())});
    }
    std::reverse(rows.begin(), rows.end());
    return rows;
}

std::vector<std::string> FindForbiddenIncludes(const fs::path& root, const std::vector<Floor>& table,
                                               const std::vector<Floor>& companions) {
    CIncludeReader reader(root, table, companions);
    reader.Read();
    return reader.Forbidden();
}

std::vector<std::string> FindUnusedDirections(const fs::path& root, const std::vector<Floor>& table,
                                              const std::vector<Floor>& companions) {
    CIncludeReader reader(root, table, companions);
    reader.Read();
    return reader.Unused();
}

std::map<std::string, std::size_t> CountFiles(const fs::path& root) {
    std::map<std::string, std::size_t> counts;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(root)) {
        if (entry.is_regular_file()) ++counts[fs::relative(entry.path().parent_path(), root).generic_string()];
    }
    return counts;
}

}  // namespace floors
