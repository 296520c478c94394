#pragma once

#include <filesystem>
#include <string>

namespace brindle {

/// Gives the test process a mount table of its own, so that no mount outlives it. False when the system
/// does not let it.
[[nodiscard]] bool enterOwnMountTable();

/// Ends the test, visibly skipped, unless it may mount.
#define SKIP_UNLESS_MOUNTS_WORK() \
    if (!brindle::enterOwnMountTable()) GTEST_SKIP() << "mounting is not allowed here"

/// A mount that is taken away when it goes. Throws std::runtime_error when it cannot be made.
class TestMount {
public:
    [[nodiscard]] static TestMount memory(const std::filesystem::path& target,
                                          const std::string& options = "size=1m");
    [[nodiscard]] static TestMount bind(const std::filesystem::path& source,
                                        const std::filesystem::path& target);
    /// Mounts an image file.
    [[nodiscard]] static TestMount image(const std::filesystem::path& file,
                                         const std::filesystem::path& target,
                                         const std::string& options = "loop");

    TestMount(TestMount&& other) noexcept;
    TestMount& operator=(TestMount&&) = delete;
    ~TestMount();

    void unmount();

private:
    explicit TestMount(std::filesystem::path target) : target_(std::move(target)) {}

    std::filesystem::path target_;  // empty: not mounted
};

/// Makes a file that holds an empty file system of the type ("ext4", "btrfs"), with options of mkfs. False
/// when the type's tools are not installed.
[[nodiscard]] bool makeImage(const std::filesystem::path& file, const std::string& type,
                             const std::string& options = "");

}  // namespace brindle
