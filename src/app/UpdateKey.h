#pragma once

#include <QByteArray>
#include <array>
#include <cstddef>
#include <optional>
#include <string>

namespace brindle {

/// The public Ed25519 key of whoever publishes updates.
class UpdateKey {
public:
    /// From its 32 bytes in base64; nothing for text of another form.
    [[nodiscard]] static std::optional<UpdateKey> from(const std::string& base64);

    /// Whether the file is `length` bytes long and `signature`, 64 bytes, is the key's signature of all of
    /// them. A file that cannot be read is not. Reads the whole file; any thread.
    [[nodiscard]] bool hasSigned(const std::string& path, std::size_t length,
                                 const QByteArray& signature) const;

private:
    std::array<unsigned char, 32> bytes_{};
};

}  // namespace brindle
