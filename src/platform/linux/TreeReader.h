#pragma once

#include "platform/TreeReader.h"
#include "platform/linux/FolderSequence.h"
#include "platform/linux/FolderTrail.h"

#include <memory>

namespace brindle {

/// The tree reader of Linux: one statx an entry, with the folders as a FolderSequence brings them.
class LinuxTreeReader final : public TreeReader {
public:
    LinuxTreeReader(std::unique_ptr<FolderSequence> folders, DatalessTest isDataless);

    [[nodiscard]] const TreeEvent* next() override;
    void skip() override;

private:
    [[nodiscard]] const TreeEvent* visitFolder();
    [[nodiscard]] const TreeEvent* visitFile();
    [[nodiscard]] const TreeEvent* enterFolder();
    [[nodiscard]] const TreeEvent* leaveFolder();
    [[nodiscard]] bool findFolder();

    const TreeEvent* tell(TreeEvent::Kind kind, int error = 0);

    std::unique_ptr<FolderSequence> folders_;
    DatalessTest isDataless_;
    FolderTrail trail_;
    TreeEvent event_;
    ListedFolder folder_;   // the last one that came
    bool isAhead_ = false;  // it belongs further on
    bool hasBegun_ = false;
    bool isAtFolder_ = false;  // the last event was a directory, whose contents come next
};

}  // namespace brindle
