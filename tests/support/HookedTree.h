#pragma once

#include "platform/TreeReader.h"

#include <functional>
#include <memory>
#include <string>
#include <utility>

namespace brindle {

/// The system's file systems, where something happens while a tree is walked.
class HookedTree final : public TreeSource {
public:
    /// Called with the root, on the walking thread, when the last event of a walk was read.
    using Hook = std::function<void(const std::string&)>;

    explicit HookedTree(Hook atEnd) : atEnd_(std::move(atEnd)) {}

    [[nodiscard]] FileNumber identify(const std::string& root) const override {
        return trees_->identify(root);
    }
    void list(const std::string& root) const override { trees_->list(root); }
    [[nodiscard]] std::unique_ptr<TreeReader> open(const std::string& root) const override {
        return std::make_unique<Reader>(trees_->open(root), root, atEnd_);
    }

private:
    class Reader final : public TreeReader {
    public:
        Reader(std::unique_ptr<TreeReader> reader, std::string root, const Hook& atEnd)
            : reader_(std::move(reader)), root_(std::move(root)), atEnd_(atEnd) {}

        [[nodiscard]] const TreeEvent* next() override {
            const TreeEvent* event = reader_->next();
            if (event == nullptr) atEnd_(root_);
            return event;
        }
        void skip() override { reader_->skip(); }

    private:
        std::unique_ptr<TreeReader> reader_;
        std::string root_;
        const Hook& atEnd_;
    };

    Hook atEnd_;
    std::unique_ptr<TreeSource> trees_ = makeTreeSource();
};

}  // namespace brindle
