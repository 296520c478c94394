#include "checks/Obstacle.h"

#include "model/FileNameText.h"
#include "model/Translation.h"

namespace brindle {
namespace {

std::string unavailableSentence(LocationStatus status, const LocationRecord& record) {
    const char* text =
        status == LocationStatus::needsAccess
            ? translated("“{}” couldn't be checked: your account isn't allowed to read {}.")
            : translated("“{}” couldn't be checked: {} isn't there, or its drive isn't connected.");
    return filled(text, fileNameText(record.name), fileNameText(record.path));
}

}  // namespace

std::optional<std::string> obstacleText(const CheckRunSummary& run, const LocationRecord& record) {
    if (const auto unavailable = run.unavailable.find(record.id); unavailable != run.unavailable.end())
        return unavailableSentence(unavailable->second, record);
    if (const auto failure = run.failures.find(record.id); failure != run.failures.end())
        return filled(translated("“{}” couldn't be checked: {}"), fileNameText(record.name), failure->second);
    return {};
}

}  // namespace brindle
