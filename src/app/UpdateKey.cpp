#include "app/UpdateKey.h"

#include "platform/WholeFile.h"

#include <algorithm>
#include <sodium.h>
#include <stdexcept>
#include <system_error>

namespace brindle {
namespace {

std::optional<std::string> contentsOf(const std::string& path, std::size_t limit) {
    try {
        return readWholeFile(path, limit);
    } catch (const std::system_error&) {
        return {};
    }
}

const unsigned char* bytesOf(const char* characters) {
    return reinterpret_cast<const unsigned char*>(characters);
}

}  // namespace

std::optional<UpdateKey> UpdateKey::from(const std::string& base64) {
    const auto bytes =
        QByteArray::fromBase64(QByteArray::fromStdString(base64), QByteArray::AbortOnBase64DecodingErrors);
    UpdateKey key;
    static_assert(sizeof key.bytes_ == crypto_sign_PUBLICKEYBYTES);
    if (static_cast<std::size_t>(bytes.size()) != key.bytes_.size()) return {};
    std::copy_n(bytesOf(bytes.constData()), key.bytes_.size(), key.bytes_.begin());
    return key;
}

bool UpdateKey::hasSigned(const std::string& path, std::size_t length, const QByteArray& signature) const {
    if (sodium_init() < 0) throw std::runtime_error("libsodium cannot be used");
    const auto contents = contentsOf(path, length);
    return contents && contents->size() == length && signature.size() == crypto_sign_BYTES &&
           crypto_sign_verify_detached(bytesOf(signature.constData()), bytesOf(contents->data()), length,
                                       bytes_.data()) == 0;
}

}  // namespace brindle
