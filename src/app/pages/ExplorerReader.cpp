#include "app/pages/ExplorerReader.h"

#include <utility>

namespace brindle {

void ExplorerReader::ask(ExplorerQuestion question) {
    if (isWorking_)
        next_ = std::move(question);
    else
        begin(std::move(question));
}

void ExplorerReader::begin(ExplorerQuestion question) {
    isWorking_ = true;
    background_.run(
        [pages = pages_, question = std::move(question)] {
            return std::make_shared<const ExplorerAnswer>(pages->answer(question));
        },
        [this](const std::shared_ptr<const ExplorerAnswer>& answer) {
            if (!next_) Q_EMIT answered(answer);
            end();
        },
        [this](const std::exception& /*error*/) {
            if (!next_) Q_EMIT failed();
            end();
        });
}

void ExplorerReader::end() {
    isWorking_ = false;
    if (next_) begin(*std::exchange(next_, std::nullopt));
}

}  // namespace brindle
