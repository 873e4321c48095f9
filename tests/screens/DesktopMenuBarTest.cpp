// SPDX-License-Identifier: GPL-3.0-or-later
#include "Support/PrivateBus.h"
#include "Support/ShownWindow.h"
#include "macOS/NavigationState.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusPendingReply>
#include <QDBusVariant>
#include <QGuiApplication>
#include <QMutex>
#include <QTest>
#include <QThread>

#include <memory>

namespace {
/// Stands in for the desktop's menu bar. It lives in a thread of its own: who registers a window waits for the answer.
class Registrar : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "com.canonical.AppMenu.Registrar")

public:
    QPair<QString, QString> menu()
    {
        const QMutexLocker lock(&m_mutex);
        return m_menu;
    }

public Q_SLOTS:
    void RegisterWindow(uint, const QDBusObjectPath &path, const QDBusMessage &message)
    {
        const QMutexLocker lock(&m_mutex);
        m_menu = {message.service(), path.path()};
    }
    void UnregisterWindow(uint) { }

private:
    QMutex m_mutex;
    QPair<QString, QString> m_menu;
};

/// The labels in a menu and below, a line for each menu, and their ids.
void read(const QDBusArgument &menu, QStringList &lines, QMap<QString, int> &ids)
{
    int id = 0;
    QVariantMap properties;
    QStringList labels;
    menu.beginStructure();
    menu >> id >> properties;
    ids.insert(properties.value(QStringLiteral("label")).toString(), id);
    menu.beginArray();
    while (!menu.atEnd()) {
        QDBusVariant entry;
        menu >> entry;
        QStringList below;
        read(entry.variant().value<QDBusArgument>(), below, ids);
        labels.append(below.takeFirst());
        lines += below;
    }
    menu.endArray();
    menu.endStructure();
    const bool isLine = properties.value(QStringLiteral("type")) == QLatin1String("separator");
    if (!labels.isEmpty())
        lines.prepend(labels.join(QStringLiteral(", ")));
    lines.prepend(isLine ? QStringLiteral("-") : properties.value(QStringLiteral("label")).toString());
}
}

class DesktopMenuBarTest : public QObject
{
    Q_OBJECT

public:
    explicit DesktopMenuBarTest(PrivateBus &bus)
        : m_bus(bus)
    {
    }

private Q_SLOTS:
    void initTestCase()
    {
        m_registrar.moveToThread(&m_thread);
        m_thread.start();
        QDBusConnection desktop = m_bus.connection(QStringLiteral("desktop"));
        desktop.registerObject(QStringLiteral("/com/canonical/AppMenu/Registrar"), &m_registrar,
                               QDBusConnection::ExportAllSlots);
        QVERIFY(desktop.registerService(QStringLiteral("com.canonical.AppMenu.Registrar")));
    }

    void cleanupTestCase()
    {
        m_thread.quit();
        m_thread.wait();
    }

    void entriesGoToTheDesktopsBar()
    {
        QCoreApplication::setApplicationVersion(QStringLiteral("9.8.7"));
        ShownWindow shown;
        shown.world.appearance.setMenuBar(true);
        QVERIFY(shown.show());
        QTRY_VERIFY(!m_registrar.menu().second.isEmpty());

        QDBusPendingReply<> layout = call("GetLayout", {0, -1, QStringList()});
        QTRY_VERIFY(layout.isFinished());
        QStringList lines;
        QMap<QString, int> ids;
        read(layout.reply().arguments().value(1).value<QDBusArgument>(), lines, ids);
        QCOMPARE(
            lines.mid(1),
            QStringList({QStringLiteral("Terremotos, Navegar"),
                         QStringLiteral("Actualizar terremotos, Mostrar/Ocultar barra lateral, Ajustes, -, "
                                        "Nueva ventana, Acerca de Terremotos, Salir"),
                         QStringLiteral("Sismos, Histórico, Mapa, Estadísticas, -, Información, -, Abrir filtros")}));

        choose(ids.value(QStringLiteral("Estadísticas")));
        QTRY_COMPARE(NavigationState::shared().selectedId(), QStringLiteral("stats"));
        choose(ids.value(QStringLiteral("Acerca de Terremotos")));
        // On this bus nobody asks for what a screen reader hears.
        QTRY_VERIFY(shown.shows("Versión 9.8.7"));
    }

    void withoutABarNothingIsRegistered()
    {
        const auto before = m_registrar.menu();
        ShownWindow shown;
        QVERIFY(shown.show());
        PrivateBus::goRound(QStringLiteral("desktop"));
        QCOMPARE(m_registrar.menu(), before);
    }

private:
    QDBusPendingCall call(const char *method, const QVariantList &arguments)
    {
        QDBusMessage message =
            QDBusMessage::createMethodCall(m_registrar.menu().first, m_registrar.menu().second,
                                           QStringLiteral("com.canonical.dbusmenu"), QLatin1String(method));
        message.setArguments(arguments);
        return QDBusConnection(QStringLiteral("desktop")).asyncCall(message);
    }

    /// What the bar tells when an entry was clicked.
    void choose(int id) { call("Event", {id, QStringLiteral("clicked"), QVariant::fromValue(QDBusVariant(0)), 0u}); }

    PrivateBus &m_bus;
    Registrar m_registrar;
    QThread m_thread;
};

int main(int argc, char *argv[])
{
    std::unique_ptr<PrivateBus> bus;
    {
        const QCoreApplication application(argc, argv);
        bus = std::make_unique<PrivateBus>();
    }
    qputenv("DBUS_SESSION_BUS_ADDRESS", bus->address().toUtf8());
    const QGuiApplication application(argc, argv);
    DesktopMenuBarTest test(*bus);
    return QTest::qExec(&test, argc, argv);
}

#include "DesktopMenuBarTest.moc"
