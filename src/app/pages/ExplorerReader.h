#pragma once

#include "app/Background.h"
#include "app/pages/ExplorerPages.h"

#include <QObject>
#include <memory>
#include <optional>

namespace brindle {

/// Answers an explorer's questions away from the main thread. Only the question that was asked last is
/// answered, and at most one other is worked on before it.
/// Thread: main.
class ExplorerReader : public QObject {
    Q_OBJECT

public:
    explicit ExplorerReader(QObject* parent = nullptr) : QObject(parent) {}

    void ask(ExplorerQuestion question);

Q_SIGNALS:
    void answered(const std::shared_ptr<const brindle::ExplorerAnswer>& answer);
    /// The question that was asked last has no answer.
    void failed();

private:
    void begin(ExplorerQuestion question);
    void end();

    std::shared_ptr<ExplorerPages> pages_ = std::make_shared<ExplorerPages>();  // of the work that runs
    std::optional<ExplorerQuestion> next_;
    bool isWorking_ = false;
    Background background_;  // last, so that it ends first
};

}  // namespace brindle
