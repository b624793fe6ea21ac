#pragma once

#include "support/test_folder.h"

#include <QProcess>
#include <QSslConfiguration>
#include <QSslKey>
#include <QSslServer>
#include <QSslSocket>
#include <QTimer>
#include <QUrl>

#include <chrono>

/// A server of release feeds on this machine.
namespace stowlark {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

/// A certificate for 127.0.0.1 that nobody has signed but itself.
struct Identity {
    Identity() {
        const QString key = QString::fromStdString(folder.path() / "key.pem");
        const QString certificate = QString::fromStdString(folder.path() / "certificate.pem");
        QProcess openssl;
        openssl.start(u"openssl"_s,
                      {u"req"_s, u"-x509"_s, u"-newkey"_s, u"rsa:2048"_s, u"-nodes"_s, u"-days"_s, u"2"_s,
                       u"-subj"_s, u"/CN=127.0.0.1"_s, u"-addext"_s, u"subjectAltName=IP:127.0.0.1"_s,
                       u"-addext"_s, u"extendedKeyUsage=serverAuth"_s, u"-keyout"_s, key, u"-out"_s,
                       certificate});
        if (!openssl.waitForFinished() || openssl.exitCode() != 0) {
            qFatal("openssl: %s", openssl.readAllStandardError().constData());
        }
        server.setPrivateKey(QSslKey(readFile(folder.path() / "key.pem"), QSsl::Rsa));
        server.setLocalCertificateChain(QSslCertificate::fromPath(certificate));
        client.setCaCertificates(server.localCertificateChain());
    }

    TestFolder folder;
    QSslConfiguration server = QSslConfiguration::defaultConfiguration();
    QSslConfiguration client = QSslConfiguration::defaultConfiguration(); ///< trusts the server
};

enum class Then { close, wait, repeat };

/// What the server sends to each request, and what it does then.
struct Reply {
    QByteArray bytes;
    Then then = Then::close;
    QByteArray more = {}; ///< to repeat
    std::chrono::milliseconds pause = 0ms;
};

inline QByteArray http(const QByteArray &status, const QByteArray &body, const QByteArray &headers = {}) {
    return "HTTP/1.1 " + status +
           "\r\nConnection: close\r\nContent-Length: " + QByteArray::number(body.size()) + "\r\n" + headers +
           "\r\n" + body;
}

inline QByteArray feed(const QByteArray &version, const QByteArray &url = "https://a.example/b") {
    return R"({"version":")" + version + R"(","releaseNotes":"Notes","downloadURL":")" + url + "\"}";
}

inline const QByteArray newer = feed("2.0");

/// Sends what it is told, and notes what it is asked.
class Server : public QSslServer {
public:
    explicit Server(const QSslConfiguration &configuration) {
        setSslConfiguration(configuration);
        listen(QHostAddress::LocalHost);
        connect(this, &QTcpServer::pendingConnectionAvailable, this, [this] {
            QTcpSocket *socket = nextPendingConnection();
            connect(socket, &QTcpSocket::readyRead, this, [this, socket] { read(*socket); });
            if (socket->bytesAvailable() > 0) { // came with the end of the handshake
                read(*socket);
            }
        });
    }

    QUrl url() const { return QUrl(u"https://127.0.0.1:%1/stowlark/version.json"_s.arg(serverPort())); }

    Reply reply;
    QByteArrayList requests;

private:
    void read(QTcpSocket &socket) {
        const QByteArray request = socket.readAll();
        if (request.isEmpty()) {
            return;
        }
        requests += request;
        answer(socket, request.startsWith("GET /moved ") ? Reply{http("200 OK", newer)} : reply);
    }

    void answer(QTcpSocket &socket, const Reply &what) {
        socket.write(QByteArray(what.bytes).replace("PORT", QByteArray::number(serverPort())));
        if (what.then == Then::close) {
            socket.disconnectFromHost();
        } else if (what.then == Then::repeat) {
            auto *timer = new QTimer(&socket);
            connect(timer, &QTimer::timeout, &socket, [&socket, what] { socket.write(what.more); });
            connect(&socket, &QTcpSocket::disconnected, timer, &QTimer::stop);
            timer->start(what.pause);
        }
    }
};

} // namespace stowlark
