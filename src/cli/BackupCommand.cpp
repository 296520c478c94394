#include "cli/BackupCommand.h"

#include "cli/SoleUse.h"
#include "model/FileNameText.h"
#include "model/NumberText.h"
#include "model/Translation.h"
#include "platform/Paths.h"
#include "platform/Terminal.h"
#include "store/Backup.h"
#include "store/HistoryExamination.h"

#include <cerrno>
#include <filesystem>
#include <iostream>
#include <nlohmann/json.hpp>
#include <system_error>

namespace brindle {
namespace {

namespace fs = std::filesystem;

std::string sentenceAbout(const char* text, const std::string& path) {
    return filled(text, fileNameText(path));
}

/// What keeps the file from being restored, in a sentence; null when it is a whole history.
const char* objectionTo(HistoryCondition condition) {
    switch (condition) {
        case HistoryCondition::absent:
            return translated("“{}” holds no storage history.");
        case HistoryCondition::newer:
            return translated("“{}” was saved by a newer version of Brindle.");
        case HistoryCondition::foreign:
            return translated("“{}” is the database of another program.");
        case HistoryCondition::damaged:
            return translated("“{}” is damaged, or no storage history.");
        case HistoryCondition::leftOpen:
            return translated("“{}” has a log beside it that belongs to a program which was killed.");
        case HistoryCondition::whole:
        case HistoryCondition::outdated:
            break;
    }
    return nullptr;
}

bool isConfirmed(const Context& context) {
    if (!isTerminal(StandardStream::input))
        throw UsageError(translated("To restore without being asked, give --yes."));
    context.output.sentence(
        translated("The history in use is replaced, and kept under another name. "
                   "Type yes to restore:"));
    std::string answer;
    std::getline(std::cin, answer);
    return answer == "yes" || answer == translated("yes");
}

}  // namespace

ExitCode runBackup(const Context& context, const BackupOptions& options) {
    const std::string destination = standardizedPath(options.file);
    std::error_code none;
    const HistoryFiles history(context.dataDirectory);
    if (!fs::exists(history.database(), none)) {
        context.output.sentence(translated("There is no storage history yet."));
        return ExitCode::nothingFound;
    }
    try {
        backUpHistory(history, destination, options.replaces ? ExistingFile::replace : ExistingFile::keep);
    } catch (const std::system_error& error) {
        if (error.code().value() != EEXIST)
            throw std::runtime_error(
                filled(translated("The backup couldn't be written ({})."), fileNameText(error.what())));
        if (options.replaces)
            throw UsageError(
                sentenceAbout(translated("“{}” is no file that a backup can replace."), destination));
        throw UsageError(
            sentenceAbout(translated("“{}” is already there. To replace it, give --force."), destination));
    } catch (const SQLiteError& error) {
        if (!error.isFull()) throw;
        throw std::runtime_error(translated("There is no room left for the backup."));
    }
    const auto bytes = static_cast<std::int64_t>(fs::file_size(destination, none));
    if (context.asJson)
        context.output.json({{"path", destination}, {"bytes", bytes}});
    else
        context.output.line(filled(translated("The history was copied to {} ({})."),
                                   fileNameText(destination), byteAmount(bytes)));
    return ExitCode::success;
}

ExitCode runRestore(const Context& context, const RestoreOptions& options) {
    const std::string path = standardizedPath(options.file);
    const HistoryFiles backup{std::string(parentPath(path)), std::string(lastComponent(path))};
    std::error_code none;
    if (!fs::is_regular_file(path, none))
        throw UsageError(sentenceAbout(translated("“{}” isn't a file."), path));
    if (fs::equivalent(path, HistoryFiles(context.dataDirectory).database(), none))
        throw UsageError(translated("That file is the history in use."));
    if (const char* objection = objectionTo(examineHistory(backup).condition))
        throw UsageError(sentenceAbout(objection, path));
    if (!options.isConfirmed && !isConfirmed(context)) {
        context.output.sentence(translated("Nothing was changed."));
        return ExitCode::nothingFound;
    }
    const SoleUse alone(context.dataDirectory);
    const fs::path kept = restoreHistory(backup, context.dataDirectory, systemNow());
    if (context.asJson) {
        context.output.json(
            {{"restored", path},
             {"kept", kept.empty() ? nlohmann::ordered_json() : nlohmann::ordered_json(kept.string())}});
        return ExitCode::success;
    }
    context.output.line(sentenceAbout(translated("The history was restored from {}."), path));
    if (!kept.empty())
        context.output.line(sentenceAbout(translated("What was there before is kept as {}."), kept.string()));
    return ExitCode::success;
}

}  // namespace brindle
