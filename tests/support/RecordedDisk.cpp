#include "support/RecordedDisk.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <sqlite3.h>

namespace brindle {
namespace {

namespace fs = std::filesystem;
using Kind = DiskCall::Kind;

constexpr std::size_t sector = 512;

void put(std::string& contents, std::size_t offset, std::string_view bytes) {
    contents.resize(std::max(contents.size(), offset + bytes.size()));
    contents.replace(offset, bytes.size(), bytes);
}

/// Writes some sectors, leaves some as they are, and puts anything into some.
void tear(std::string& contents, std::size_t offset, std::string_view bytes, std::mt19937_64& random) {
    for (std::size_t done = 0; done < bytes.size();) {
        const std::size_t size = std::min(bytes.size() - done, sector - (offset + done) % sector);
        const auto fate = random() % 3;
        if (fate == 0) {
            put(contents, offset + done, bytes.substr(done, size));
        } else if (fate == 1) {
            std::string noise(size, '\0');
            std::ranges::generate(noise, [&] { return static_cast<char>(random()); });
            put(contents, offset + done, noise);
        }
        done += size;
    }
}

}  // namespace

/// The files as they are on the disk for certain, and what is still under way to it.
struct RecordedDisk::Replay {
    struct File {
        std::string contents;
        std::vector<const Step*> pending;
    };

    explicit Replay(const RecordedDisk& recorded) : files(recorded.names_.size()) {}

    void take(const Step& step) {
        File& file = files[step.file];
        switch (step.kind) {
            case Kind::open:
                file.contents = step.bytes;
                if (step.isNew)
                    names.push_back(&step);
                else
                    isNamed.insert_or_assign(step.file, true);
                break;
            case Kind::remove:
                names.push_back(&step);
                break;
            case Kind::write:
            case Kind::truncate:
                file.pending.push_back(&step);
                break;
            case Kind::sync:
                for (const Step* pending : file.pending) apply(file, *pending);
                file.pending.clear();
                // With a new file its name is brought to the disk, and so all those before it.
                if (std::ranges::any_of(names, [&](const Step* named) { return named->file == step.file; }))
                    settleNames(names.size());
                break;
        }
    }

    void settleNames(std::size_t count) {
        for (std::size_t i = 0; i < count; ++i)
            isNamed.insert_or_assign(names[i]->file, names[i]->kind == Kind::open);
        names.erase(names.begin(), names.begin() + static_cast<std::ptrdiff_t>(count));
    }

    static void apply(File& file, const Step& step) {
        const auto offset = static_cast<std::size_t>(step.offset);
        if (step.kind == Kind::truncate)
            file.contents.resize(offset);
        else
            put(file.contents, offset, step.bytes);
    }

    /// Gives the number of steps that were lost or torn.
    int losePower(std::mt19937_64& random) {
        const std::size_t named = random() % (names.size() + 1);
        int lost = static_cast<int>(names.size() - named);
        settleNames(named);
        for (File& file : files) {
            // Now and then everything got through, or nothing.
            const auto mood = random() % 4;
            for (const Step* step : file.pending) {
                const auto fate = mood < 2 ? mood : random() % 3;
                if (fate == 0) {
                    apply(file, *step);
                    continue;
                }
                ++lost;
                if (fate == 2 && step->kind == Kind::write)
                    tear(file.contents, static_cast<std::size_t>(step->offset), step->bytes, random);
            }
        }
        return lost;
    }

    std::vector<File> files;
    std::vector<const Step*> names;       // given or lost, and not on the disk for certain
    std::map<std::size_t, bool> isNamed;  // on the disk
};

RecordedDisk::RecordedDisk(fs::path folder)
    : folder_(std::move(folder)), disk_([this](const DiskCall& call) { return record(call); }) {}

std::size_t RecordedDisk::steps() const {
    const std::scoped_lock guard(lock_);
    return steps_.size();
}

int RecordedDisk::record(const DiskCall& call) {
    const fs::path path = call.path;
    if (path.parent_path() != folder_) return SQLITE_OK;
    const std::scoped_lock guard(lock_);
    if (call.kind == Kind::open) {
        open(path.native());
        return SQLITE_OK;
    }
    const auto file = files_.find(path.native());
    if (file == files_.end()) return SQLITE_OK;
    steps_.push_back({.kind = call.kind,
                      .file = file->second,
                      .offset = call.offset,
                      .bytes = {call.bytes.begin(), call.bytes.end()}});
    if (call.kind == Kind::remove) files_.erase(file);
    return SQLITE_OK;
}

void RecordedDisk::open(const std::string& path) {
    if (files_.contains(path)) return;
    std::ifstream there(path, std::ios::binary);
    steps_.push_back({.kind = Kind::open,
                      .file = names_.size(),
                      .bytes = {std::istreambuf_iterator<char>(there), {}},
                      .isNew = !there.is_open()});
    files_[path] = names_.size();
    names_.push_back(fs::path(path).filename());
}

int RecordedDisk::playPowerLoss(std::size_t steps, std::mt19937_64& random, const fs::path& to) const {
    const std::scoped_lock guard(lock_);
    Replay replay(*this);
    for (std::size_t i = 0; i < steps; ++i) replay.take(steps_[i]);
    const int lost = replay.losePower(random);
    for (const auto& [number, isThere] : replay.isNamed)
        if (isThere) std::ofstream(to / names_[number], std::ios::binary) << replay.files[number].contents;
    return lost;
}

}  // namespace brindle
