#pragma once

#include <map>
#include <vector>

#include <QByteArray>
#include <QTcpServer>
#include <QUrl>

/// A real HTTP server on the loopback address, in the test's own thread. Each path answers as the test says; every
/// other one with 404.
class LoopbackServer {
public:
    struct Request {
        QByteArray method;
        QByteArray path;
        std::map<QByteArray, QByteArray> headers;  ///< names in lower case
    };
    struct Response {
        int status = 200;
        QByteArray body;
        QByteArray location = {};  ///< where a redirect leads
        /// What comes on the wire. Silent: nothing, and the connection stays open. Dribbling: the head, then a byte
        /// every few milliseconds, never to the end. Cut: half of the body, then the connection closes. Garbage: the
        /// body alone, without HTTP around it.
        enum class Wire { whole, silent, dribbling, cut, garbage } wire = Wire::whole;
    };

    LoopbackServer();

    void answer(const QByteArray& path, const Response& response) { answers_[path] = response; }
    QUrl url(const QByteArray& path) const;
    /// The same by an address that reaches this server, too, but is not a loopback address.
    QUrl outsideURL(const QByteArray& path) const;
    /// The methods of the requests so far, in order: "HEAD GET".
    QByteArray methods() const;

    std::vector<Request> requests;

private:
    void serve(QTcpSocket& socket);
    static void send(QTcpSocket& socket, const Request& request, const Response& response);

    QTcpServer server_;
    std::map<QByteArray, Response> answers_;
};
