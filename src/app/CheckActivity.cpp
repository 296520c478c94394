#include "app/CheckActivity.h"

#include "model/FileNameText.h"
#include "model/NumberText.h"
#include "model/Translation.h"

#include <fmt/format.h>

namespace brindle {

std::string description(const CheckActivity& activity) {
    const std::string name = fileNameText(activity.locationName);
    if (activity.isEstimating)
        return fmt::format(fmt::runtime(translated("Estimating earlier history from file dates… {}")), name);
    return fmt::format(fmt::runtime(translated("Checking your files… {0} · {1} files")), name,
                       groupedNumber(activity.filesSeen));
}

}  // namespace brindle
