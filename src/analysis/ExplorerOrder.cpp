#include "analysis/ExplorerOrder.h"

#include <algorithm>
#include <cstdint>
#include <memory>
#include <numeric>
#include <span>
#include <stdexcept>
#include <string_view>
#include <unicode/coll.h>
#include <unicode/locid.h>
#include <unicode/ustring.h>

namespace brindle {
namespace {

constexpr UChar32 replacement = 0xfffd;  // for bytes that are not UTF-8

using OrderedChanges = std::vector<const FileChange*>;

/// Sorts by what `keyOf` gives for the index of each change, ascending. The keys stand beside each other
/// while they are compared: a change of a long list is seldom in the processor's cache.
template <class KeyOf>
void sortByKey(OrderedChanges& changes, const KeyOf& keyOf) {
    struct Keyed {
        decltype(keyOf(std::size_t{})) key;
        std::int64_t id;
        const FileChange* change;
    };
    std::vector<Keyed> keyed;
    keyed.reserve(changes.size());
    for (std::size_t i = 0; i < changes.size(); ++i) keyed.push_back({keyOf(i), changes[i]->id, changes[i]});
    std::ranges::sort(
        keyed, [](const Keyed& a, const Keyed& b) { return a.key != b.key ? a.key < b.key : a.id < b.id; });
    std::ranges::transform(keyed, changes.begin(), &Keyed::change);
}

std::uint64_t magnitude(std::int64_t bytes) {
    const auto unsignedBytes = static_cast<std::uint64_t>(bytes);
    return bytes < 0 ? 0 - unsignedBytes : unsignedBytes;
}

/// What makes an order of names natural, worked out once for each name: two of these compare byte by byte.
class NameKeys {
public:
    explicit NameKeys(const std::string& locale) {
        UErrorCode status = U_ZERO_ERROR;
        collator_.reset(icu::Collator::createInstance(icu::Locale(locale.c_str()), status));
        if (U_SUCCESS(status)) collator_->setAttribute(UCOL_NUMERIC_COLLATION, UCOL_ON, status);
        if (U_FAILURE(status)) throw std::runtime_error(u_errorName(status));
    }

    void add(std::string_view name) {
        // In UTF-16 a name has no more units than bytes.
        if (text_.size() < name.size()) text_.resize(name.size());
        std::int32_t length = 0;
        UErrorCode status = U_ZERO_ERROR;
        u_strFromUTF8WithSub(text_.data(), sizeOf(text_), &length, name.data(), sizeOf(name), replacement,
                             nullptr, &status);
        if (U_FAILURE(status)) throw std::runtime_error(u_errorName(status));
        std::int32_t needed = collator_->getSortKey(text_.data(), length, key_.data(), sizeOf(key_));
        if (needed > sizeOf(key_)) {
            key_.resize(static_cast<std::size_t>(needed));
            needed = collator_->getSortKey(text_.data(), length, key_.data(), sizeOf(key_));
        }
        bytes_.insert(bytes_.end(), key_.begin(), key_.begin() + needed);
        ends_.push_back(bytes_.size());
    }

    [[nodiscard]] std::uint32_t count() const { return static_cast<std::uint32_t>(ends_.size()); }

    /// The place of each name, in the order of their addition; names that the order does not tell apart share
    /// one.
    [[nodiscard]] std::vector<std::uint32_t> places() const {
        std::vector<Keyed> keyed(count());
        for (std::uint32_t name = 0; name < count(); ++name) keyed[name].name = name;
        std::vector<std::uint32_t> places(count());
        std::uint32_t next = 0;
        place(keyed, 0, places, next);
        return places;
    }

private:
    template <class Units>
    static std::int32_t sizeOf(const Units& units) {
        return static_cast<std::int32_t>(units.size());
    }

    struct Keyed {
        std::uint64_t part = 0;  // the bytes of the name's key that are being compared, the first one highest
        std::uint32_t name = 0;
    };

    /// Gives the names, whose keys are alike up to `depth`, their places from `next` on. Parts of the keys
    /// are compared in the place where they are sorted: names begin alike more often than not, and whole keys
    /// lie far apart in memory.
    void place(std::span<Keyed> names, std::size_t depth, std::vector<std::uint32_t>& places,
               std::uint32_t& next) const {
        for (Keyed& one : names) one.part = part(one.name, depth);
        std::ranges::sort(names, {}, &Keyed::part);
        while (!names.empty()) {
            const std::uint64_t shared = names.front().part;
            const auto alike = names.first(static_cast<std::size_t>(
                std::ranges::find_if(names, [&](const Keyed& one) { return one.part != shared; }) -
                names.begin()));
            names = names.subspan(alike.size());
            const bool ended = (shared & 0xff) == 0;  // every key ends with a zero, its only one
            if (alike.size() > 1 && !ended) {
                place(alike, depth + sizeof shared, places, next);
            } else {
                for (const Keyed& one : alike) places[one.name] = next;
                ++next;
            }
        }
    }

    [[nodiscard]] std::uint64_t part(std::uint32_t name, std::size_t depth) const {
        const std::size_t begin = (name == 0 ? 0 : ends_[name - 1]) + depth;
        std::uint64_t part = 0;
        for (std::size_t i = begin; i < begin + sizeof part; ++i)
            part = part << 8 | (i < ends_[name] ? bytes_[i] : 0);
        return part;
    }

    std::unique_ptr<icu::Collator> collator_;
    std::vector<char16_t> text_ = std::vector<char16_t>(256);
    std::vector<std::uint8_t> key_ = std::vector<std::uint8_t>(1024);
    std::vector<std::uint8_t> bytes_;  // all keys, one after the other
    std::vector<std::size_t> ends_;
};

/// The numbers of the names met of late. In a long list the same few come again and again; one that has been
/// forgotten in between gets another number.
class RecentNames {
public:
    /// The name's number, or the next one for a name that is not known; it is known from now on.
    std::uint32_t number(const std::string& name) {
        const std::size_t hash = std::hash<std::string>{}(name);
        const auto check = static_cast<std::uint32_t>(hash >> 32);
        Slot& slot = slots_[hash % slots_.size()];
        if (slot.check != check || slot.number >= names_.size() || *names_[slot.number] != name) {
            slot = {check, count()};
            names_.push_back(&name);
        }
        return slot.number;
    }

    [[nodiscard]] std::uint32_t count() const { return static_cast<std::uint32_t>(names_.size()); }

private:
    struct Slot {
        std::uint32_t check = 0;  // the hash's other half: names that differ are seldom looked at
        std::uint32_t number = 0;
    };

    std::vector<Slot> slots_ = std::vector<Slot>(1 << 16);
    std::vector<const std::string*> names_;
};

/// The changes come in the order of their ids, which names that are alike keep.
void sortByName(OrderedChanges& changes, const std::string& locale) {
    NameKeys keys(locale);
    RecentNames recent;
    std::vector<std::uint32_t> names;  // of the changes
    names.reserve(changes.size());
    for (const FileChange* change : changes) {
        names.push_back(recent.number(change->name));
        if (recent.count() > keys.count()) keys.add(change->name);
    }
    // With the changes of every place in the order of their ids, there is nothing left to compare.
    const auto places = keys.places();
    std::vector<std::size_t> ends(keys.count());
    for (const std::uint32_t name : names) ++ends[places[name]];
    std::partial_sum(ends.begin(), ends.end(), ends.begin());
    OrderedChanges sorted(changes.size());
    for (std::size_t i = changes.size(); i-- > 0;) sorted[--ends[places[names[i]]]] = changes[i];
    changes = std::move(sorted);
}

}  // namespace

void sortFiles(OrderedChanges& changes, FileSort sort, const std::string& locale) {
    switch (sort) {
        case FileSort::largest:
            sortByKey(changes, [&](std::size_t i) { return ~magnitude(changes[i]->byteDelta); });
            break;
        case FileSort::newest:
            sortByKey(changes, [&](std::size_t i) { return -changes[i]->observedAt; });
            break;
        case FileSort::name:
            if (!std::ranges::is_sorted(changes, {}, &FileChange::id))
                sortByKey(changes, [&](std::size_t i) { return changes[i]->id; });
            sortByName(changes, locale);
            break;
    }
}

}  // namespace brindle
