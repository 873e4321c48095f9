// SPDX-License-Identifier: GPL-3.0-or-later
#include "Support/PrivateBus.h"
#include "Support/ShownWindow.h"
#include "macOS/NavigationState.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QGuiApplication>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {
/// Stands in for the desktop's menu bar, on the program's own connection: who registers a window waits for the answer.
class Registrar : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "com.canonical.AppMenu.Registrar")

public:
    QString menuPath;

public Q_SLOTS:
    void RegisterWindow(uint, const QDBusObjectPath &path) { menuPath = path.path(); }
    void UnregisterWindow(uint) { }
};

/// The label of a menu or an entry and, in brackets, those below; and the ids of all.
void read(const QDBusArgument &menu, QString &text, QMap<QString, int> &ids)
{
    int id = 0;
    QVariantMap properties;
    menu.beginStructure();
    menu >> id >> properties;
    const QString label = properties.value(u"label"_s, properties.value(u"type"_s)).toString();
    ids.insert(label, id);
    text += u'[' + label;
    menu.beginArray();
    while (!menu.atEnd()) {
        QDBusVariant entry;
        menu >> entry;
        read(entry.variant().value<QDBusArgument>(), text, ids);
    }
    menu.endArray();
    menu.endStructure();
    text += u']';
}
}

class DesktopMenuBarTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void entriesGoToTheDesktopsBarWhereThereIsOne()
    {
        Registrar registrar;
        QDBusConnection program = QDBusConnection::sessionBus();
        QVERIFY(
            program.registerObject(u"/com/canonical/AppMenu/Registrar"_s, &registrar, QDBusConnection::ExportAllSlots));
        QVERIFY(program.registerService(u"com.canonical.AppMenu.Registrar"_s));
        QCoreApplication::setApplicationVersion(u"9.8.7"_s);
        ShownWindow shown;
        QVERIFY(shown.show());
        QCOMPARE(registrar.menuPath, QString());
        shown.world.appearance.setMenuBar(true);
        QTRY_VERIFY(!registrar.menuPath.isEmpty());

        const auto call = [&](const QString &method, const QVariantList &arguments) {
            QDBusMessage message = QDBusMessage::createMethodCall(program.baseService(), registrar.menuPath,
                                                                  u"com.canonical.dbusmenu"_s, method);
            message.setArguments(arguments);
            return program.call(message).arguments();
        };
        QString text;
        QMap<QString, int> ids;
        read(call(u"GetLayout"_s, {0, -1, QStringList()}).value(1).value<QDBusArgument>(), text, ids);
        QCOMPARE(
            text,
            u"[[Terremotos[Actualizar terremotos][Mostrar/Ocultar barra lateral][Ajustes][separator]"
            "[Nueva ventana][Acerca de Terremotos][Salir]]"
            "[Navegar[Sismos][Histórico][Mapa][Estadísticas][separator][Información][separator][Abrir filtros]]]"_s);

        const auto choose = [&](const QString &label) {
            call(u"Event"_s, {ids.value(label), u"clicked"_s, QVariant::fromValue(QDBusVariant(0)), 0u});
        };
        choose(u"Estadísticas"_s);
        QTRY_COMPARE(NavigationState::shared().selectedId(), u"stats"_s);
        choose(u"Acerca de Terremotos"_s);
        // On this bus nobody asks for what a screen reader hears.
        QTRY_VERIFY(shown.shows("Versión 9.8.7"));
    }
};

int main(int argc, char *argv[])
{
    const PrivateBus bus;
    qputenv("DBUS_SESSION_BUS_ADDRESS", bus.address().toUtf8());
    const QGuiApplication application(argc, argv);
    DesktopMenuBarTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "DesktopMenuBarTest.moc"
