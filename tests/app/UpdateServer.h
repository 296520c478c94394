#pragma once

#include <QByteArray>
#include <QSslConfiguration>
#include <QSslServer>
#include <QSslSocket>
#include <map>
#include <optional>
#include <string>

namespace brindle {

/// What the server says to one path.
struct UpdateAnswer {
    QByteArray body;
    QByteArray status = "200 OK";
    QByteArray header = {};  // one more line of the head, "Name: value"
    std::optional<qint64> announcedLength = {};
    bool keepsSilent = false;
    bool neverEnds = false;
};

/// An HTTPS server of the test's own process on this machine, for which it makes a certificate.
class UpdateServer final : public QSslServer {
public:
    UpdateServer();

    [[nodiscard]] QString address(const QString& path) const;
    /// Trusts the server's certificate and no other.
    [[nodiscard]] const QSslConfiguration& client() const { return client_; }

    std::map<QString, UpdateAnswer> answers;  // by path
    std::vector<QByteArray> requests;         // their heads

private:
    void answer(QSslSocket* connection);
    static void write(QSslSocket* connection, const UpdateAnswer& answer);

    QSslConfiguration client_;
};

}  // namespace brindle
