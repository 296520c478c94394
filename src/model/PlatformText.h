#pragma once

// Sentences that name a thing which not every system has, with the words of each system side by side. They
// pass through translated() where they are shown.

namespace brindle::platformText {

#ifdef __APPLE__
inline constexpr bool isMac = true;
#else
inline constexpr bool isMac = false;
#endif

inline constexpr const char* notLocal =
    isMac ? "Brindle can only check folders on drives connected to this Mac."
          : "Brindle can only check folders on drives connected to this computer.";

inline constexpr const char* staysHere = isMac ? "Your file names and storage history stay on this Mac."
                                               : "Your file names and storage history stay on this computer.";

inline constexpr const char* noProgramToOpen =
    isMac ? "macOS can't find Brindle to open at login. Move it to the Applications folder and try again."
          : "Brindle's program file can't be found to open at login. Install Brindle and try again.";

inline constexpr const char* showInFiles = isMac ? "Show in Finder" : "Show in Files";

inline constexpr const char* afterSleep =
    isMac ? "Brindle checks when it opens and then on this schedule while it's running, including when its "
            "window is closed. After your Mac sleeps, it runs one catch-up check."
          : "Brindle checks when it opens and then on this schedule while it's running, including when its "
            "window is closed. After your computer sleeps, it runs one catch-up check.";

inline constexpr const char* quietStart =
    isMac
        ? "When opened at login without the window, Brindle stays in the menu bar. Opening Brindle yourself "
          "always shows the window."
        : "When opened at login without the window, Brindle stays in the system tray. Opening Brindle "
          "yourself always shows the window.";

inline constexpr const char* showInTray = isMac ? "Show in menu bar" : "Show in system tray";

inline constexpr const char* closingWindow =
    isMac ? "Closing the window keeps Brindle running and checking. Quit (⌘Q) stops all checks."
          : "Closing the window keeps Brindle running and checking. Quit (Ctrl+Q) stops all checks.";

inline constexpr const char* notEncrypted =
    isMac ? "Brindle records file sizes, dates, and paths. It never reads file contents. The history isn't "
            "encrypted; it's protected by your Mac account like your other files."
          : "Brindle records file sizes, dates, and paths. It never reads file contents. The history isn't "
            "encrypted; it's protected by your user account like your other files.";

inline constexpr const char* someUnreadable =
    isMac ? "Some folders couldn't be read because macOS protects them. To include them, turn on Brindle in "
            "System Settings › Privacy & Security › Files and Folders, or under Full Disk Access, then check "
            "again."
          : "Some folders couldn't be read because their permissions don't allow it. To include them, let "
            "your account read them, then check again.";

inline constexpr const char* notVisible =
    isMac ? "Snapshots, folders only an administrator can read, and system files such as the Spotlight index."
          : "Snapshots, folders only an administrator can read, files outside the included locations, and "
            "what the file system keeps for itself.";

inline constexpr const char* otherVolumesOfStartup =
    isMac ? "The System, Preboot, Recovery, and VM volumes that share this drive."
          : "Other volumes that share this drive.";

inline constexpr const char* purgeable =
    isMac ? "{} of the used space is purgeable: macOS frees it when space is needed, from Time Machine "
            "snapshots, "
            "caches, and downloaded iCloud files."
          : "{} of the used space is purgeable: the system frees it when space is needed.";

inline constexpr const char* snapshotSizes = isMac ? "macOS reports snapshot sizes only to an administrator."
                                                   : "Snapshot sizes are reported only to an administrator.";

// What the example history calls the drive that the system starts from, and where its person lives.
inline constexpr const char* exampleStartupDrive = isMac ? "Macintosh HD" : "System";
inline constexpr const char* exampleHome = isMac ? "/Users/robin" : "/home/ann";

}  // namespace brindle::platformText
