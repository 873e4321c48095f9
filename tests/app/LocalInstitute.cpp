// SPDX-License-Identifier: GPL-3.0-or-later
#include "LocalInstitute.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QSslCertificate>
#include <QSslConfiguration>
#include <QSslKey>
#include <QSslSocket>

#include <stdexcept>

namespace {
constexpr int httpsPort = 443;
const QString hostName = QStringLiteral("www.ign.es");

void run(const QString &program, const QStringList &arguments)
{
    QProcess process;
    process.start(program, arguments);
    if (!process.waitForFinished() || process.exitCode() != 0)
        throw std::runtime_error((program + QLatin1Char(' ') + arguments.join(QLatin1Char(' ')) + QLatin1Char('\n')
                                  + QString::fromLocal8Bit(process.readAllStandardError()))
                                     .toStdString());
}

QByteArray contentsOf(const QString &path)
{
    QFile file(path);
    if (!file.open(QFile::ReadOnly))
        throw std::runtime_error(qPrintable(path));
    return file.readAll();
}
}

LocalInstitute::LocalInstitute(Certificate certificate)
{
    QFile hosts(m_folder.filePath(QStringLiteral("hosts")));
    if (!hosts.open(QFile::WriteOnly) || hosts.write("127.0.0.1 localhost www.ign.es\n") < 0)
        throw std::runtime_error("hosts");
    hosts.close();
    bindOver(hosts.fileName(), QStringLiteral("/etc/hosts"));
    makeCertificates(certificate);
    bindOver(m_folder.filePath(QStringLiteral("certificates")), QStringLiteral("/etc/ssl/certs"));
    listen();
}

LocalInstitute::~LocalInstitute()
{
    for (const QString &place : std::as_const(m_bound))
        QProcess::execute(QStringLiteral("umount"), {place});
}

void LocalInstitute::bindOver(const QString &file, const QString &place)
{
    run(QStringLiteral("mount"), {QStringLiteral("--bind"), file, place});
    m_bound.append(place);
}

void LocalInstitute::makeCertificates(Certificate certificate)
{
    const auto path = [this](const char *name) { return m_folder.filePath(QString::fromLatin1(name)); };
    const auto openssl = [](const QString &arguments) { run(QStringLiteral("openssl"), arguments.split(u' ')); };
    const QString newKey = QStringLiteral("-newkey ec -pkeyopt ec_paramgen_curve:prime256v1 -nodes ");
    const QString authority = path("authority.pem");
    const QString authorityKey = path("authority.key");
    openssl(QStringLiteral("req -x509 -days 2 -subj /CN=authority -addext keyUsage=critical,keyCertSign ") + newKey
            + QStringLiteral("-keyout %1 -out %2").arg(authorityKey, authority));
    const QString host = certificate == Certificate::otherHost ? QStringLiteral("www.example.org") : hostName;
    openssl(QStringLiteral("req -new -subj /CN=%1 -addext subjectAltName=DNS:%1 ").arg(host) + newKey
            + QStringLiteral("-keyout %1 -out %2").arg(path("site.key"), path("site.csr")));
    const QString signature = certificate == Certificate::selfSigned
        ? QStringLiteral("-signkey ") + path("site.key")
        : QStringLiteral("-CA %1 -CAkey %2").arg(authority, authorityKey);
    openssl(QStringLiteral("x509 -req -copy_extensions copyall -days %1 -in %2 -out %3 ")
                .arg(QString::number(certificate == Certificate::expired ? -1 : 2), path("site.csr"), path("site.pem"))
            + signature);

    // As in the machine's own folder: one bundle, and one file for each authority with a link named by its hash.
    QDir().mkpath(path("certificates"));
    if (certificate != Certificate::unknownAuthority) {
        QFile::copy(path("authority.pem"), path("certificates/ca-certificates.crt"));
        QFile::copy(path("authority.pem"), path("certificates/authority.pem"));
        run(QStringLiteral("openssl"), {QStringLiteral("rehash"), path("certificates")});
    }
}

void LocalInstitute::listen()
{
    QSslConfiguration configuration = QSslConfiguration::defaultConfiguration();
    configuration.setLocalCertificate(QSslCertificate(contentsOf(m_folder.filePath(QStringLiteral("site.pem")))));
    configuration.setPrivateKey(QSslKey(contentsOf(m_folder.filePath(QStringLiteral("site.key"))), QSsl::Ec));
    configuration.setPeerVerifyMode(QSslSocket::VerifyNone);
    m_server.setSslConfiguration(configuration);
    QObject::connect(&m_server, &QSslServer::errorOccurred, &m_server, [this] { ++m_refusals; });
    QObject::connect(&m_server, &QTcpServer::pendingConnectionAvailable, &m_server, [this] {
        QTcpSocket *connection = m_server.nextPendingConnection();
        QObject::connect(connection, &QTcpSocket::readyRead, &m_server, [this, connection] { answer(connection); });
        QObject::connect(connection, &QTcpSocket::disconnected, connection, &QObject::deleteLater);
    });
    if (!m_server.listen(QHostAddress::LocalHost, httpsPort))
        throw std::runtime_error(m_server.errorString().toStdString());
}

void LocalInstitute::answer(QTcpSocket *connection)
{
    if (!connection->peek(connection->bytesAvailable()).contains("\r\n\r\n"))
        return;
    connection->readAll();
    ++m_requests;
    connection->write("HTTP/1.1 200 OK\r\nContent-Type: text/html; charset=UTF-8\r\nConnection: close\r\n"
                      "Content-Length: "
                      + QByteArray::number(m_page.size()) + "\r\n\r\n" + m_page);
    connection->disconnectFromHost();
}
