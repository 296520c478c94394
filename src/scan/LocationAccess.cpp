#include "scan/LocationAccess.h"

#include "model/FileNameText.h"
#include "model/PlatformText.h"
#include "model/RandomUUID.h"
#include "model/Translation.h"
#include "platform/Bookmark.h"
#include "platform/FolderProbe.h"
#include "platform/Paths.h"
#include "platform/VolumeIdentity.h"

#include <algorithm>

namespace brindle {
namespace {

using Reason = LocationChoiceError::Reason;

std::string choiceText(Reason reason, const std::string& path) {
    const auto sentence = [&](const char* text) { return filled(text, fileNameText(path)); };
    switch (reason) {
        case Reason::missing:
            return sentence(translated("The folder “{}” isn't there."));
        case Reason::notAFolder:
            return sentence(translated("“{}” isn't a folder."));
        case Reason::needsAccess:
            return sentence(translated("Your account isn't allowed to read “{}”."));
        case Reason::pseudo:
            return sentence(translated("“{}” belongs to the system and holds no stored files."));
        case Reason::notLocal:
            break;
    }
    return translated(platformText::notLocal);
}

FolderProbe probeChosen(const std::string& path, const MountTable& mounts) {
    auto probe = probeFolder(path, mounts);
    switch (probe.state) {
        case FolderState::readable:
            break;
        case FolderState::refused:
            throw LocationChoiceError(Reason::needsAccess, path);
        case FolderState::missing:
            throw LocationChoiceError(Reason::missing, path);
        case FolderState::notAFolder:
            throw LocationChoiceError(Reason::notAFolder, path);
        case FolderState::notLocal:
            throw LocationChoiceError(Reason::notLocal, path);
        case FolderState::pseudo:
            throw LocationChoiceError(Reason::pseudo, path);
    }
    return probe;
}

AccessState resolveDrive(const LocationRecord& record, const MountTable& mounts) {
    const auto drive = findDrive(record.volumeID, record.path, mounts);
    if (!drive) return AccessDisconnected{};
    if (drive->state == FolderState::refused) return AccessNeeded{};
    return AccessReady{.path = drive->mountPath, .scanPath = drive->mountPath};
}

AccessState resolveBookmark(const Bookmark& bookmark, const MountTable& mounts) {
    const auto resolution = resolve(bookmark, mounts);
    if (std::holds_alternative<FolderRefused>(resolution)) return AccessNeeded{};
    const auto* found = std::get_if<FolderFound>(&resolution);
    if (found == nullptr) return AccessDisconnected{};
    AccessReady ready{.path = found->path, .scanPath = found->probe.path};
    if (found->isStale) ready.refreshedBookmark = encode(makeBookmark(found->path, found->probe));
    return ready;
}

AccessState resolvePath(const LocationRecord& record, const MountTable& mounts) {
    const auto probe = probeFolder(record.path, mounts);
    if (probe.volumeID.empty() || probe.volumeID != record.volumeID) return AccessDisconnected{};
    if (probe.state == FolderState::refused) return AccessNeeded{};
    return AccessReady{.path = record.path,
                       .scanPath = probe.path,
                       .refreshedBookmark = encode(makeBookmark(record.path, probe))};
}

}  // namespace

LocationChoiceError::LocationChoiceError(Reason why, const std::string& path)
    : std::runtime_error(choiceText(why, path)), reason(why) {}

LocationCandidate makeCandidate(const std::string& chosenPath, std::span<const LocationRecord> existing,
                                UnixTime now, const MountTable& mounts) {
    const auto path = standardizedPath(chosenPath);
    const auto probe = probeChosen(path, mounts);
    const auto volume = describeVolume(probe);
    LocationCandidate candidate;
    candidate.record = {.id = LocationID{randomUUID()},
                        .name = path == "/" ? volume.name : std::string(lastComponent(path)),
                        .path = path,
                        .scanPath = probe.path,
                        .kind = LocationKind::folder,
                        .volumeID = volume.id,
                        .volumeName = volume.name,
                        .caseSensitive = volume.caseSensitive,
                        .bookmark = encode(makeBookmark(path, probe)),
                        .addedAt = now};
    candidate.overlap = findOverlap(candidate.record, existing);
    return candidate;
}

LocationCandidate makeDriveCandidate(const DriveInfo& drive, std::span<const LocationRecord> existing,
                                     UnixTime now) {
    LocationCandidate candidate;
    candidate.record = {.id = LocationID{randomUUID()},
                        .name = drive.name,
                        .path = drive.mountPath,
                        .scanPath = drive.scanPath,
                        .kind = LocationKind::volume,
                        .volumeID = drive.volumeID,
                        .volumeName = drive.name,
                        .caseSensitive = drive.caseSensitive,
                        .addedAt = now};
    candidate.overlap = findOverlap(candidate.record, existing);
    return candidate;
}

LocationCandidate makeFolderOrDriveCandidate(const std::string& chosenPath,
                                             std::span<const LocationRecord> existing, UnixTime now,
                                             const MountTable& mounts) {
    const std::string path = standardizedPath(chosenPath);
    const bool isMountPoint = std::ranges::any_of(
        mounts.mounts(), [&](const Mount& mount) { return mount.target == path && isDrive(mount); });
    if (isMountPoint)
        for (const DriveInfo& drive : mountedDrives({}, mounts))
            if (drive.mountPath == path) return makeDriveCandidate(drive, existing, now);
    return makeCandidate(path, existing, now, mounts);
}

AccessState resolveAccess(const LocationRecord& record, const MountTable& mounts) {
    if (record.kind == LocationKind::volume) return resolveDrive(record, mounts);
    if (record.bookmark)
        if (const auto bookmark = decodeBookmark(*record.bookmark)) return resolveBookmark(*bookmark, mounts);
    return resolvePath(record, mounts);
}

}  // namespace brindle
