// The project's own sources as text, for the rules that no compiler keeps.
#pragma once

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <vector>

namespace house {

struct SourceFile {
    std::string path; // from the project's folder on
    std::vector<std::string> lines;
};

inline SourceFile read_source(const std::filesystem::path& project, const std::filesystem::path& file)
{
    SourceFile source{file.lexically_relative(project).generic_string(), {}};
    std::ifstream stream{file};
    for (std::string line; std::getline(stream, line);)
        source.lines.push_back(line);
    return source;
}

inline bool is_source(const std::filesystem::path& file)
{
    constexpr std::string_view endings[] = {".cpp", ".h", ".c", ".txt", ".md", ".asm", ""};
    return std::find(std::begin(endings), std::end(endings), file.extension().string()) != std::end(endings);
}

// All files below one of the project's folders, in the order of their names; test data and corpora left out.
inline std::vector<SourceFile> sources_below(const std::filesystem::path& project, const char* folder)
{
    std::vector<SourceFile> sources;
    if (!std::filesystem::is_directory(project / folder))
        return sources;
    for (auto entry = std::filesystem::recursive_directory_iterator{project / folder};
         entry != std::filesystem::recursive_directory_iterator{}; ++entry) {
        const std::string name = entry->path().filename().string();
        if (entry->is_directory() && (name == "corpus" || name == "data"))
            entry.disable_recursion_pending();
        else if (entry->is_regular_file() && is_source(entry->path()))
            sources.push_back(read_source(project, entry->path()));
    }
    std::sort(sources.begin(), sources.end(), [](const auto& a, const auto& b) { return a.path < b.path; });
    return sources;
}

inline std::vector<SourceFile> whole_tree(const std::filesystem::path& project)
{
    std::vector<SourceFile> all;
    for (const char* folder : {"src", "sim", "apps", "tests", "fuzz", "bench", "tools", "docs", "examples"}) {
        auto sources = sources_below(project, folder);
        all.insert(all.end(), std::make_move_iterator(sources.begin()), std::make_move_iterator(sources.end()));
    }
    for (const char* file : {"run", "test", "CMakeLists.txt", "README.md"}) {
        if (std::filesystem::is_regular_file(project / file))
            all.push_back(read_source(project, project / file));
    }
    return all;
}

} // namespace house
