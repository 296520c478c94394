#include "support/TestMounts.h"

#include <cstdlib>
#include <fstream>
#include <sched.h>
#include <stdexcept>
#include <sys/mount.h>
#include <utility>

namespace brindle {
namespace {

bool run(const std::string& command) {
    return std::system((command + " >/dev/null 2>&1").c_str()) == 0;
}

std::string quoted(const std::filesystem::path& path) {
    return "'" + path.native() + "'";
}

void mountOrThrow(const char* source, const std::filesystem::path& target, const char* type,
                  unsigned long flags, const char* options) {
    if (::mount(source, target.c_str(), type, flags, options) != 0)
        throw std::runtime_error("cannot mount at " + target.native());
}

}  // namespace

bool enterOwnMountTable() {
    static const bool isEntered =
        ::unshare(CLONE_NEWNS) == 0 && ::mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0;
    return isEntered;
}

TestMount TestMount::memory(const std::filesystem::path& target, const std::string& options) {
    mountOrThrow("tmpfs", target, "tmpfs", 0, options.c_str());
    return TestMount(target);
}

TestMount TestMount::bind(const std::filesystem::path& source, const std::filesystem::path& target) {
    mountOrThrow(source.c_str(), target, nullptr, MS_BIND, nullptr);
    return TestMount(target);
}

TestMount TestMount::image(const std::filesystem::path& file, const std::filesystem::path& target,
                           const std::string& options) {
    if (!run("mount -o " + options + " " + quoted(file) + " " + quoted(target)))
        throw std::runtime_error("cannot mount at " + target.native());
    return TestMount(target);
}

TestMount::TestMount(TestMount&& other) noexcept : target_(std::exchange(other.target_, {})) {}

TestMount::~TestMount() {
    if (!target_.empty()) ::umount2(target_.c_str(), MNT_DETACH);
}

void TestMount::unmount() {
    if (::umount2(std::exchange(target_, {}).c_str(), 0) != 0) throw std::runtime_error("cannot unmount");
}

bool makeImage(const std::filesystem::path& file, const std::string& type, const std::string& options) {
    std::ofstream(file).close();
    std::filesystem::resize_file(file, type == "btrfs" ? 128U << 20U : 8U << 20U);
    return run("mkfs." + type + " -q " + options + " " + quoted(file));
}

}  // namespace brindle
