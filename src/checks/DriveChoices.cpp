#include "checks/DriveChoices.h"

#include "checks/LocationChanges.h"
#include "platform/Capacity.h"
#include "platform/Paths.h"
#include "scan/LocationAccess.h"

#include <utility>

namespace brindle {
namespace {

using Reason = LocationChoiceError::Reason;

std::string reasonAgainst(const DriveInfo& drive, const LocationProposal& proposal,
                          const MountTable& mounts) {
    if (proposal.isRefused) return proposal.explanation;
    const auto found = findDrive(drive.volumeID, drive.mountPath, mounts);
    const bool isRefused = found && found->state == FolderState::refused;
    return isRefused ? LocationChoiceError(Reason::needsAccess, drive.mountPath).what() : "";
}

}  // namespace

std::vector<DriveChoice> driveChoices(std::span<const LocationRecord> tracked, const MountTable& mounts) {
    std::vector<DriveChoice> choices;
    const UnixTime now = systemNow();
    for (const DriveInfo& drive : mountedDrives({}, mounts)) {
        const LocationProposal proposal = proposeDrive(drive, tracked, now);
        if (proposal.overlap.kind == LocationOverlap::Kind::same) continue;
        DriveChoice choice{.drive = drive, .reason = reasonAgainst(drive, proposal, mounts)};
        if (const auto reading = readCapacity(drive.mountPath, drive.volumeID, drive.name, now, mounts))
            choice.totalBytes = reading->totalBytes;
        choices.push_back(std::move(choice));
    }
    for (const Mount& mount : mounts.mounts())
        if (isShare(mount))
            choices.push_back({.drive = {.id = mount.target,
                                         .name = std::string(lastComponent(mount.target)),
                                         .mountPath = mount.target,
                                         .scanPath = mount.target},
                               .reason = LocationChoiceError(Reason::notLocal, mount.target).what()});
    return choices;
}

}  // namespace brindle
