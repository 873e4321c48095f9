// SPDX-License-Identifier: GPL-3.0-or-later
#include "LocalInstitute.h"

#include <QDir>
#include <QFile>
#include <QProcess>

#include <stdexcept>

namespace {
constexpr quint16 httpsPort = 443;
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
    const QSslConfiguration security = LoopbackServer::certified(m_folder.filePath(QStringLiteral("site.pem")),
                                                                 m_folder.filePath(QStringLiteral("site.key")));
    m_server = std::make_unique<LoopbackServer>(security, httpsPort);
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
