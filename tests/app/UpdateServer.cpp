#include "app/UpdateServer.h"

#include "support/Program.h"
#include "support/TempFolder.h"

#include <QFile>
#include <QSslCertificate>
#include <QSslKey>
#include <cstdlib>
#include <stdexcept>

namespace brindle {

UpdateServer::UpdateServer() {
    const TempFolder folder;
    const std::string key = folder.path() / "key.pem";
    const std::string certificate = folder.path() / "certificate.pem";
    const auto made =
        runProgram({.arguments = {"openssl", "req", "-x509", "-newkey", "rsa:2048", "-nodes", "-days", "2",
                                  "-subj", "/CN=localhost", "-addext", "subjectAltName=DNS:localhost",
                                  "-keyout", key, "-out", certificate},
                    .environment = {}});
    if (made.exitCode != 0) throw std::runtime_error(made.error);

    const auto certificates = QSslCertificate::fromPath(QString::fromStdString(certificate));
    QFile keyFile(QString::fromStdString(key));
    if (!keyFile.open(QFile::ReadOnly)) throw std::runtime_error("no key was made");
    auto server = QSslConfiguration::defaultConfiguration();
    server.setLocalCertificateChain(certificates);
    server.setPrivateKey(QSslKey(&keyFile, QSsl::Rsa));
    setSslConfiguration(server);
    client_ = QSslConfiguration::defaultConfiguration();
    client_.setCaCertificates(certificates);

    connect(this, &QTcpServer::pendingConnectionAvailable, this, [this] {
        while (auto* connection = qobject_cast<QSslSocket*>(nextPendingConnection()))
            connect(connection, &QSslSocket::readyRead, this, [this, connection] { answer(connection); });
    });
    if (!listen(QHostAddress::LocalHost)) throw std::runtime_error("no port is free");
}

QString UpdateServer::address(const QString& path) const {
    return QString("https://localhost:%1%2").arg(serverPort()).arg(path);
}

void UpdateServer::answer(QSslSocket* connection) {
    const QByteArray head = connection->property("head").toByteArray() + connection->readAll();
    connection->setProperty("head", head);
    if (!head.endsWith("\r\n\r\n")) return;
    connection->setProperty("head", QByteArray());
    requests.push_back(head);
    const auto found = answers.find(QString::fromLatin1(head.split(' ').value(1)));
    write(connection,
          found != answers.end() ? found->second : UpdateAnswer{.body = "", .status = "404 Not Found"});
}

void UpdateServer::write(QSslSocket* connection, const UpdateAnswer& answer) {
    if (answer.keepsSilent) return;
    QByteArray head = "HTTP/1.1 " + answer.status + "\r\nConnection: close\r\n";
    if (!answer.header.isEmpty()) head += answer.header + "\r\n";
    if (!answer.neverEnds)
        head += "Content-Length: " + QByteArray::number(answer.announcedLength.value_or(answer.body.size())) +
                "\r\n";
    connection->write(head + "\r\n" + answer.body);
    if (!answer.neverEnds) return connection->disconnectFromHost();
    const auto writeMore = [connection] { connection->write(QByteArray(1 << 16, ' ')); };
    connect(connection, &QSslSocket::encryptedBytesWritten, connection, [connection, writeMore] {
        if (connection->encryptedBytesToWrite() == 0) writeMore();
    });
    writeMore();
}

}  // namespace brindle
