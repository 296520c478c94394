#include "app/Appcast.h"
#include "app/UpdateError.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>

// Any feed is refused, or offers at most one package that can be fetched and stored: over HTTPS, signed, and
// under a name that leads into no other folder.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace brindle;
    const QByteArray feed(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    try {
        const Appcast appcast = parseAppcast(feed);
        if (!appcast.newest) return 0;
        const UpdateOffer& offer = *appcast.newest;
        const bool isPlainName = !offer.fileName.empty() && !offer.fileName.starts_with('.') &&
                                 offer.fileName.find('/') == std::string::npos;
        if (offer.package.scheme() != "https" || offer.signature.size() != 64 || offer.length < 1 ||
            !isPlainName)
            std::abort();
    } catch (const UpdateError&) {
        return 0;
    }
    return 0;
}
