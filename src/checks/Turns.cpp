#include "checks/Turns.h"

#include <mutex>
#include <set>
#include <utility>

namespace brindle {

struct Turns::State {
    std::mutex mutex;
    std::multiset<LocationID> leftOut;
    LocationID current;                              // empty while no turn is on
    std::shared_ptr<CancellationFlag> cancellation;  // of that turn
};

Turns::Turns() : state_(std::make_shared<State>()) {}

Turns::Turn::Turn(Turns& turns, const LocationID& location, std::shared_ptr<const CancellationFlag> run)
    : state_(turns.state_), cancellation_(std::make_shared<CancellationFlag>(std::move(run))) {
    const std::scoped_lock guard(state_->mutex);
    state_->current = location;
    state_->cancellation = cancellation_;
    if (state_->leftOut.contains(location)) cancellation_->set();
}

Turns::Turn::~Turn() {
    const std::scoped_lock guard(state_->mutex);
    state_->current = {};
    state_->cancellation.reset();
}

Turns::LeftOut Turns::leaveOut(const LocationID& location) {
    const std::scoped_lock guard(state_->mutex);
    const auto place = state_->leftOut.insert(location);
    if (state_->current == location && state_->cancellation) state_->cancellation->set();
    return {&*place, [state = state_, place](const LocationID*) {
                const std::scoped_lock still(state->mutex);
                state->leftOut.erase(place);
            }};
}

}  // namespace brindle
