#include "platform/BlockDevice.h"

#include <charconv>
#include <filesystem>
#include <libudev.h>
#include <memory>
#include <mutex>
#include <sys/stat.h>
#include <sys/sysmacros.h>

namespace brindle {
namespace {

using Udev = std::unique_ptr<udev, decltype(&udev_unref)>;
using Device = std::unique_ptr<udev_device, decltype(&udev_device_unref)>;

std::string property(udev_device* device, const char* name) {
    const char* value = udev_device_get_property_value(device, name);
    return value != nullptr ? value : "";
}

std::string attribute(udev_device* device, const char* name) {
    const char* value = udev_device_get_sysattr_value(device, name);
    return value != nullptr ? value : "";
}

std::string persistentID(udev_device* device) {
    if (auto partition = property(device, "ID_PART_ENTRY_UUID"); !partition.empty()) return partition;
    for (const auto* name : {"DM_UUID", "ID_WWN_WITH_EXTENSION", "ID_WWN", "ID_SERIAL"}) {
        auto id = property(device, name);
        if (id.empty()) continue;
        if (const auto number = property(device, "ID_PART_ENTRY_NUMBER"); !number.empty())
            id.append("-part").append(number);
        return id;
    }
    return "";
}

bool isOnRemovableHardware(udev_device* device) {
    if (property(device, "ID_BUS") == "usb" || property(device, "ID_DRIVE_FLASH_SD") == "1") return true;
    if (udev_device_get_parent_with_subsystem_devtype(device, "usb", nullptr) != nullptr) return true;
    auto* card = udev_device_get_parent_with_subsystem_devtype(device, "mmc", nullptr);
    if (card != nullptr && attribute(card, "type") == "SD") return true;
    auto* disk = udev_device_get_parent_with_subsystem_devtype(device, "block", "disk");
    return attribute(disk != nullptr ? disk : device, "removable") == "1";
}

bool isInternal(udev* context, udev_device* device) {
    if (isOnRemovableHardware(device)) return false;
    // An encrypted or joined volume is where the devices below it are.
    std::error_code ignored;
    const auto below = std::filesystem::path(udev_device_get_syspath(device)) / "slaves";
    for (const auto& entry : std::filesystem::directory_iterator(below, ignored)) {
        const Device part(
            udev_device_new_from_syspath(context, std::filesystem::canonical(entry.path(), ignored).c_str()),
            &udev_device_unref);
        if (part && !isInternal(context, part.get())) return false;
    }
    return true;
}

}  // namespace

std::string decodedDeviceText(std::string_view text) {
    std::string decoded;
    while (!text.empty()) {
        const auto digits = text.starts_with("\\x") ? text.substr(2, 2) : "";
        const auto* end = digits.data() + digits.size();
        unsigned char byte = 0;
        const bool isEscape = digits.size() == 2 && std::from_chars(digits.data(), end, byte, 16).ptr == end;
        decoded += isEscape ? static_cast<char>(byte) : text.front();
        text.remove_prefix(isEscape ? 4 : 1);
    }
    return decoded;
}

std::optional<BlockDevice> lookUpDevice(dev_t number) {
    // The library makes a random key for its tables at first use, which its threads share unguarded.
    static std::mutex libraryMutex;
    const std::scoped_lock guard(libraryMutex);
    const Udev context(udev_new(), &udev_unref);
    if (!context) return {};
    const Device device(udev_device_new_from_devnum(context.get(), 'b', number), &udev_device_unref);
    if (!device) return {};
    return BlockDevice{.fileSystemUUID = property(device.get(), "ID_FS_UUID"),
                       .label = decodedDeviceText(property(device.get(), "ID_FS_LABEL_ENC")),
                       .fileSystemType = property(device.get(), "ID_FS_TYPE"),
                       .persistentID = persistentID(device.get()),
                       .isInternal = isInternal(context.get(), device.get())};
}

std::optional<BlockDevice> deviceOf(const Mount& mount, const DeviceLookup& lookUp) {
    if (major(mount.device) != 0) return lookUp(mount.device);
    struct stat status {};
    if (!mount.source.starts_with("/dev/") || ::stat(mount.source.c_str(), &status) != 0) return {};
    return S_ISBLK(status.st_mode) ? lookUp(status.st_rdev) : std::nullopt;
}

}  // namespace brindle
