#include "checks/Failures.h"

#include "model/FileNameText.h"
#include "model/Translation.h"
#include "store/Migrations.h"
#include "store/SQLiteError.h"

#include <new>
#include <system_error>

namespace brindle {
namespace {

std::string unusable(const std::string& directory, const std::string& why) {
    return filled(translated("The storage history in “{0}” can't be used ({1})."), fileNameText(directory),
                  why);
}

std::string databaseSentence(const SQLiteError& error, const std::string& directory) {
    const auto about = [&](const char* text) {
        return filled(text, fileNameText(directory), error.message());
    };
    if (error.isDamage())
        return about(translated("The storage history in “{0}” is damaged and was left as it is ({1})."));
    if (error.isFull())
        return about(translated("There is no room left on the disk for the storage history in “{0}”."));
    if (error.isLocked())
        return about(
            translated("Another program is writing to the storage history in “{0}”. Try again later."));
    if (error.isReadOnly())
        return about(translated("The storage history in “{0}” can't be opened or written ({1})."));
    return unusable(directory, error.message());
}

}  // namespace

std::string failureFinding(const std::exception& error, const std::string& directory) {
    if (const auto* database = dynamic_cast<const SQLiteError*>(&error))
        return databaseSentence(*database, directory);
    if (dynamic_cast<const std::system_error*>(&error) != nullptr)
        return filled(translated("The storage history in “{0}” can't be kept ({1})."),
                      fileNameText(directory), fileNameText(error.what()));
    if (dynamic_cast<const std::bad_alloc*>(&error) != nullptr)
        return unusable(directory, translated("out of memory"));
    return error.what();
}

std::string failureSentence(const std::exception& error, const std::string& directory) {
    std::string sentence = failureFinding(error, directory);
    const auto* database = dynamic_cast<const SQLiteError*>(&error);
    if (database == nullptr || !database->isDamage()) return sentence;
    sentence += ' ';
    sentence += translated("To recover what can be read, quit Brindle and run: brindle doctor --recover");
    return sentence;
}

}  // namespace brindle
