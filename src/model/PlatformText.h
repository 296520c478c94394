#pragma once

#include "model/Translatable.h"

// Sentences that name a thing which not every system has, with the words of each system side by side. They
// pass through translated() where they are shown.

namespace brindle::platformText {

#ifdef __APPLE__
inline constexpr bool isMac = true;
#else
inline constexpr bool isMac = false;
#endif

inline constexpr const char* notLocal =
    isMac ? translatable("Brindle can only check folders on drives connected to this Mac.")
          : translatable("Brindle can only check folders on drives connected to this computer.");

inline constexpr const char* staysHere =
    isMac ? translatable("Your file names and storage history stay on this Mac.")
          : translatable("Your file names and storage history stay on this computer.");

inline constexpr const char* noProgramToOpen =
    isMac
        ? translatable(
              "macOS can't find Brindle to open at login. Move it to the Applications folder and try again.")
        : translatable(
              "Brindle's program file can't be found to open at login. Install Brindle and try again.");

inline constexpr const char* showInFiles =
    isMac ? translatable("Show in Finder") : translatable("Show in Files");

inline constexpr const char* afterSleep =
    isMac
        ? translatable(
              "Brindle checks when it opens and then on this schedule while it's running, including when its "
              "window is closed. After your Mac sleeps, it runs one catch-up check.")
        : translatable(
              "Brindle checks when it opens and then on this schedule while it's running, including when its "
              "window is closed. After your computer sleeps, it runs one catch-up check.");

inline constexpr const char* quietStart =
    isMac ? translatable(
                "When opened at login without the window, Brindle stays in the menu bar. Opening Brindle "
                "yourself "
                "always shows the window.")
          : translatable(
                "When opened at login without the window, Brindle stays in the system tray. Opening Brindle "
                "yourself always shows the window.");

inline constexpr const char* showInTray =
    isMac ? translatable("Show in menu bar") : translatable("Show in system tray");

inline constexpr const char* closingWindow =
    isMac ? translatable("Closing the window keeps Brindle running and checking. Quit (⌘Q) stops all checks.")
          : translatable(
                "Closing the window keeps Brindle running and checking. Quit (Ctrl+Q) stops all checks.");

inline constexpr const char* notEncrypted =
    isMac
        ? translatable(
              "Brindle records file sizes, dates, and paths. It never reads file contents. The history isn't "
              "encrypted; it's protected by your Mac account like your other files.")
        : translatable(
              "Brindle records file sizes, dates, and paths. It never reads file contents. The history isn't "
              "encrypted; it's protected by your user account like your other files.");

inline constexpr const char* someUnreadable =
    isMac
        ? translatable(
              "Some folders couldn't be read because macOS protects them. To include them, turn on Brindle "
              "in "
              "System Settings › Privacy & Security › Files and Folders, or under Full Disk Access, then "
              "check "
              "again.")
        : translatable(
              "Some folders couldn't be read because their permissions don't allow it. To include them, let "
              "your account read them, then check again.");

inline constexpr const char* notVisible =
    isMac
        ? translatable(
              "Snapshots, folders only an administrator can read, and system files such as the Spotlight "
              "index.")
        : translatable(
              "Snapshots, folders only an administrator can read, files outside the included locations, and "
              "what the file system keeps for itself.");

inline constexpr const char* otherVolumesOfStartup =
    isMac ? translatable("The System, Preboot, Recovery, and VM volumes that share this drive.")
          : translatable("Other volumes that share this drive.");

inline constexpr const char* purgeable =
    isMac ? translatable(
                "{} of the used space is purgeable: macOS frees it when space is needed, from Time Machine "
                "snapshots, "
                "caches, and downloaded iCloud files.")
          : translatable("{} of the used space is purgeable: the system frees it when space is needed.");

inline constexpr const char* snapshotSizes =
    isMac ? translatable("macOS reports snapshot sizes only to an administrator.")
          : translatable("Snapshot sizes are reported only to an administrator.");

// What the example history calls the drive that the system starts from, and where its person lives.
inline constexpr const char* exampleStartupDrive = isMac ? "Macintosh HD" : "System";
inline constexpr const char* exampleHome = isMac ? "/Users/robin" : "/home/ann";

}  // namespace brindle::platformText
