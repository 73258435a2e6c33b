#include "Tests/Updates/LoopbackServer.h"

#include <QTcpSocket>
#include <QTimer>

namespace {

LoopbackServer::Request parse(const QByteArray& head) {
    const QList<QByteArray> lines = head.split('\n');
    const QList<QByteArray> first = lines.front().trimmed().split(' ');
    LoopbackServer::Request request{.method = first.value(0), .path = first.value(1), .headers = {}};
    for (const QByteArray& line : lines.mid(1)) {
        const qsizetype colon = line.indexOf(':');
        if (colon > 0) {
            request.headers[line.left(colon).toLower()] = line.mid(colon + 1).trimmed();
        }
    }
    return request;
}

}  // namespace

LoopbackServer::LoopbackServer() {
    server_.listen(QHostAddress::LocalHost);
    QObject::connect(&server_, &QTcpServer::newConnection, &server_, [this] {
        while (QTcpSocket* const socket = server_.nextPendingConnection()) {
            QObject::connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
            QObject::connect(socket, &QTcpSocket::readyRead, socket, [this, socket] { serve(*socket); });
        }
    });
}

QUrl LoopbackServer::url(const QByteArray& path) const {
    return QUrl(
        QStringLiteral("http://127.0.0.1:%1%2").arg(server_.serverPort()).arg(QLatin1StringView(path)));
}

QUrl LoopbackServer::outsideURL(const QByteArray& path) const {
    QUrl address = url(path);
    address.setHost(QStringLiteral("0.0.0.0"));
    return address;
}

QByteArray LoopbackServer::methods() const {
    QByteArrayList methods;
    for (const Request& request : requests) {
        methods.push_back(request.method);
    }
    return methods.join(' ');
}

void LoopbackServer::serve(QTcpSocket& socket) {
    if (!socket.peek(65536).contains("\r\n\r\n")) {
        return;
    }
    const Request request = parse(socket.readAll());
    requests.push_back(request);
    const auto answer = answers_.find(request.path);
    send(socket, request, answer == answers_.end() ? Response{.status = 404, .body = {}} : answer->second);
}

void LoopbackServer::send(QTcpSocket& socket, const Request& request, const Response& response) {
    using Wire = Response::Wire;
    if (response.wire == Wire::silent) {
        return;
    }
    if (response.wire != Wire::garbage) {
        socket.write("HTTP/1.1 " + QByteArray::number(response.status) + " Status\r\nConnection: close\r\n");
        if (!response.location.isEmpty()) {
            socket.write("Location: " + response.location + "\r\n");
        }
        socket.write("Content-Length: " + QByteArray::number(response.body.size()) + "\r\n\r\n");
    }
    if (response.wire == Wire::dribbling) {
        auto* const timer = new QTimer(&socket);
        QObject::connect(timer, &QTimer::timeout, &socket, [&socket] { socket.write(" "); });
        timer->start(5);
        return;
    }
    if (request.method != "HEAD") {
        socket.write(response.wire == Wire::cut ? response.body.left(response.body.size() / 2)
                                                : response.body);
    }
    socket.disconnectFromHost();
}
