#pragma once

#include "app/Background.h"

#include <exception>
#include <functional>
#include <optional>
#include <utility>

namespace brindle {

/// Works out in the background what was asked for last. Of several questions only the last is answered, and
/// at most one other is worked on before it.
///
/// A member of the object that it works for, as Background is.
/// Thread: main.
template <class Answer>
class LatestAnswer {
public:
    using Question = std::function<Answer()>;  // called on some thread

    /// `taken` gets the answer, `failed` the std::exception that the question threw.
    LatestAnswer(std::function<void(Answer)> taken, std::function<void(const std::exception&)> failed)
        : taken_(std::move(taken)), failed_(std::move(failed)) {}

    void ask(Question question) {
        isWanted_ = false;
        next_ = std::move(question);
        if (!isWorking_) workOnNext();
    }

    /// What was asked is not wanted any more.
    void forget() {
        isWanted_ = false;
        next_.reset();
    }

private:
    void workOnNext() {
        isWorking_ = next_.has_value();
        if (!isWorking_) return;
        isWanted_ = true;
        background_.run(
            *std::exchange(next_, std::nullopt),
            [this](Answer answer) {
                if (isWanted_) taken_(std::move(answer));
                workOnNext();
            },
            [this](const std::exception& error) {
                if (isWanted_) failed_(error);
                workOnNext();
            });
    }

    std::function<void(Answer)> taken_;
    std::function<void(const std::exception&)> failed_;
    std::optional<Question> next_;
    bool isWorking_ = false;
    bool isWanted_ = false;  // what is being worked on
    Background background_;  // last, so that it ends first
};

}  // namespace brindle
