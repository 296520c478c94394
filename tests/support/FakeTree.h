#pragma once

#include "platform/TreeReader.h"

#include <algorithm>
#include <cstddef>
#include <functional>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

namespace brindle {

/// A tree that is only a script of events, for what a real file system does too seldom. The root's own two
/// events are added to it.
class FakeTree final : public TreeSource {
public:
    using Kind = TreeEvent::Kind;

    FakeTree& folder(std::string path, EntryStatus status = {}) {
        return add(Kind::directory, std::move(path), 0, status);
    }
    FakeTree& endFolder(std::string path) { return add(Kind::directoryEnd, std::move(path)); }
    FakeTree& file(std::string path, EntryStatus status = {}) {
        return add(Kind::file, std::move(path), 0, status);
    }
    FakeTree& files(int count, EntryStatus status = {}) {
        for (int n = 0; n < count; ++n) file("file" + std::to_string(n), status);
        return *this;
    }
    FakeTree& unreadable(std::string path, int error) {
        return add(Kind::unreadableDirectory, std::move(path), error);
    }
    FakeTree& noStatus(std::string path, int error) { return add(Kind::noStatus, std::move(path), error); }
    FakeTree& other(std::string path) { return add(Kind::other, std::move(path)); }

    FileNumber number{.device = 1, .inode = 2};  // of the root
    int identifyError = 0;
    int listError = 0;
    std::function<void(int)> beforeEvent = [](int) {};  // told how many were read before
    mutable int eventsRead = 0;

    [[nodiscard]] FileNumber identify(const std::string& root) const override {
        if (identifyError != 0) throw std::system_error(identifyError, std::generic_category(), root);
        return number;
    }
    void list(const std::string& root) const override {
        if (listError != 0) throw std::system_error(listError, std::generic_category(), root);
    }
    [[nodiscard]] std::unique_ptr<TreeReader> open(const std::string& /*root*/) const override {
        return std::make_unique<Reader>(*this);
    }

private:
    struct Step {
        TreeEvent event;
        std::string path;
    };

    class Reader final : public TreeReader {
    public:
        explicit Reader(const FakeTree& tree) : tree_(tree), steps_(tree.steps_) {
            const bool hasFailed = !steps_.empty() && steps_.back().path.empty();
            steps_.insert(steps_.begin(), stepOf(Kind::directory, ""));
            if (!hasFailed) steps_.push_back(stepOf(Kind::directoryEnd, ""));
        }

        [[nodiscard]] const TreeEvent* next() override {
            tree_.beforeEvent(tree_.eventsRead);
            if (next_ == steps_.size()) return nullptr;
            ++tree_.eventsRead;
            Step& step = steps_[next_++];
            step.event.path = step.path;
            return &step.event;
        }

        void skip() override {
            const auto level = steps_[next_ - 1].event.level;
            while (steps_[next_].event.level > level) ++next_;
        }

    private:
        const FakeTree& tree_;
        std::vector<Step> steps_;
        std::size_t next_ = 0;
    };

    static Step stepOf(Kind kind, std::string path, int error = 0, EntryStatus status = {}) {
        const auto separators = std::count(path.begin(), path.end(), '/');
        const int level = path.empty() ? 0 : static_cast<int>(separators) + 1;
        return {{.kind = kind, .level = level, .error = error, .status = status}, std::move(path)};
    }

    FakeTree& add(Kind kind, std::string path, int error = 0, EntryStatus status = {}) {
        steps_.push_back(stepOf(kind, std::move(path), error, status));
        return *this;
    }

    std::vector<Step> steps_;
};

}  // namespace brindle
