#pragma once

#include <cstdint>
#include <filesystem>
#include <random>
#include <string>
#include <vector>

namespace brindle {

/// A tree of files that changes at random, in every way in which trees change. The same seed gives the same
/// tree and the same changes. Its owner can read all of it.
class RandomTree {
public:
    /// Makes the folder `root`.
    RandomTree(std::filesystem::path root, std::uint64_t seed);

    void change(int times);

    [[nodiscard]] const std::filesystem::path& root() const { return root_; }

private:
    using Path = std::filesystem::path;

    /// What is in the tree, sorted.
    struct Entries {
        std::vector<Path> folders;  // the root first
        std::vector<Path> files;
        std::vector<Path> all;  // without the root
    };

    void addFile();
    void addFolder();
    void addChain();
    void addSpecialFile();
    void addHardLink();
    void addSymbolicLink();
    void resize();
    void remove();
    void rename();
    void exchangeFileAndFolder();
    void changeMode();

    [[nodiscard]] Entries list() const;
    [[nodiscard]] std::uint64_t below(std::uint64_t end);
    [[nodiscard]] const Path& oneOf(const std::vector<Path>& paths) { return paths[below(paths.size())]; }
    [[nodiscard]] std::string name();
    [[nodiscard]] Path freePath();
    [[nodiscard]] Path freePathIn(Path folder);
    [[nodiscard]] std::uintmax_t size();
    void writeFile(const Path& path);

    Path root_;
    std::mt19937_64 random_;
    Entries entries_;
};

}  // namespace brindle
