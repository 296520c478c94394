#include "app/CheckActivity.h"

#include "model/FileNameText.h"
#include "model/NumberText.h"
#include "model/Translation.h"

namespace brindle {

std::string description(const CheckActivity& activity) {
    const std::string name = fileNameText(activity.locationName);
    if (activity.isEstimating)
        return filled(translated("Estimating earlier history from file dates… {}"), name);
    return filled(translated("Checking your files… {0} · {1} files"), name,
                  groupedNumber(activity.filesSeen));
}

}  // namespace brindle
