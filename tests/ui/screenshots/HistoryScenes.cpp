#include "ui/screenshots/Scenes.h"

#include <filesystem>
#include <fmt/format.h>

namespace brindle::screenshots {

StageSettings recorded(std::function<void(TempHistory&, UnixTime now)> record) {
    StageSettings settings{.isExample = false};
    settings.prepare = [record = std::move(record), now = settings.now](const std::string& data) {
        TempHistory history;
        record(history, now);
        history.close();
        std::filesystem::copy(history.directory(), data);
    };
    return settings;
}

/// A folder whose baseline is all there is.
Scene firstDayScene() {
    StageSettings settings = recorded([](TempHistory& history, UnixTime /*now*/) {
        history.include("Documents");
        history.check("Documents", {{"a", 1'000'000}, {"b/c", 25'000'000}});
    });
    return {"first-day", std::move(settings), everyPage()};
}

/// A week with a day that no check covers, one whose check could not read everything, names of every kind,
/// and a drive that is away.
Scene firstWeekScene() {
    StageSettings settings = recorded([](TempHistory& history, UnixTime now) {
        history.now = now - 6 * 86'400;
        history.include("Documents");
        history.include("Photos with a name that is much longer than names usually are");
        Files files{{"Letters/a", 1'000'000}, {"Letters/b", 25'000'000}};
        const auto check = [&](ScanReport report = {}) {
            for (const char* id :
                 {"Documents", "Photos with a name that is much longer than names usually are"})
                history.check(id, files, report);
            history.now += 86'400;
        };
        check();
        files["Letters/Drafts/a very long name of a file that somebody once thought explained it all.odt"] =
            4'300'000;
        files["Bytes \xff that are no text"] = 77'000'000;
        files["\xd7\xa9\xd7\x9c\xd7\x95\xd7\x9d.txt"] = 1'500'000;
        check();
        files.erase("Letters/b");
        check({.unreadable = {{"Letters/Private", true}}});
        history.now += 86'400;
        files["Films/one.mkv"] = 8'400'000'000;
        check();
        files["Films/one.mkv"] = 9'400'000'000;
        files["Films/two.mkv"] = 1'200'000'000;
        check();
        history.now = now;
        files.erase("Films/two.mkv");
        check();
        history.store().setStatus({"Documents"}, LocationStatus::disconnected).get();
    });
    return {"first-week", std::move(settings), everyPage()};
}

/// Half a million changes on one day.
Scene manyChangesScene() {
    StageSettings settings = recorded([](TempHistory& history, UnixTime now) {
        history.now = now - 86'400;
        history.include("Home");
        history.check("Home", {});
        history.now = now;
        Files files;
        for (int i = 0; i < 500'000; ++i)
            files[fmt::format("Folder {}/Part {}/file {}.dat", i % 40, i % 1000, i)] = 1000 + i * 37 % 90'000;
        history.check("Home", files);
    });
    return {"many-changes", std::move(settings), {everyPage()[0], everyPage()[1]}};
}

}  // namespace brindle::screenshots
