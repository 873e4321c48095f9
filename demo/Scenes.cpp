// SPDX-License-Identifier: GPL-3.0-or-later
#include "Scenes.h"

#include "PageGenerator.h"
#include "Steps.h"
#include "iOS/Historico/HistoricoScreen.h"

namespace {
using namespace std::chrono_literals;
using namespace Steps;

constexpr QSize phoneSize(360, 640);
constexpr QSize gallerySize(1100, 740);

/// The moment of every scene: a Friday morning with a swarm under way.
constexpr Instant now{std::chrono::sys_days{std::chrono::year{2025} / 3 / 14} + 10h + 25min};

/// Ordinary events and a swarm, all of the last ten days.
QByteArray tenDays()
{
    PageGenerator generator(7);
    return PageGenerator::page(generator.swarm(45, now, 120h) + generator.ordinary(105, now));
}

/// As long a page as the institute has published.
QByteArray longSwarm()
{
    return PageGenerator::page(PageGenerator(7).swarm(1698, now, 240h));
}

/// Place names as nobody should write them: markup, escapes of a terminal, marks that turn the writing round, and a
/// name as long as a page.
QByteArray hostilePage()
{
    QList<ParsedEarthquake> events = PageGenerator(8).ordinary(12, now);
    const QStringList names = {
        QStringLiteral("&lt;b&gt;EL PASO&lt;/b&gt; &lt;img src=\"https://example.org/a.png\"&gt;"),
        QStringLiteral("\u202ESAMALL SOL ED ODOCI\u202C"),
        QStringLiteral("EL\u0007 PASO\u001B[31m\tRED\u2028NEXT LINE"),
        QStringLiteral("EL PASO ").repeated(500),
        QStringLiteral("%1 %n %@ {0} \\n"),
    };
    for (qsizetype i = 0; i < names.size(); ++i)
        events[i].location = names[i];
    return PageGenerator::page(events);
}

/// Ordinary events moved back in time, and all to one place where `isOneZone`.
QByteArray oldEvents(std::chrono::days age, bool isOneZone)
{
    QList<ParsedEarthquake> events = PageGenerator(9).ordinary(40, now - age);
    for (ParsedEarthquake &event : events) {
        event.latitude = isOneZone ? 28.05 : event.latitude;
        event.longitude = isOneZone ? -16.45 : event.longitude;
    }
    return PageGenerator::page(events);
}

/// One event in the middle of the sea, of which nobody felt anything.
QByteArray seaEvent()
{
    ParsedEarthquake event = PageGenerator(9).ordinaryEvent(now - 1h);
    event.latitude = 28.75;
    event.longitude = -15.1;
    event.maxIntensity.reset();
    event.location = QStringLiteral("ATLÁNTICO-CANARIAS");
    return PageGenerator::page({event});
}

void open(Stage &stage)
{
    stage.world.clock.setNow(now);
    stage.open();
}

/// Opens the program on a full store, its first refresh done.
void openFull(Stage &stage)
{
    stage.world.urlSession.enqueue(tenDays());
    open(stage);
}

/// The same over the phone-sized root.
void openPhone(Stage &stage)
{
    stage.world.urlSession.enqueue(tenDays());
    stage.world.clock.setNow(now);
    stage.open(orvaliaApp::Root::phone);
}

/// Opens the history over the same and what happened in two years before.
void openHistory(Stage &stage)
{
    PageGenerator generator(11);
    QList<ParsedEarthquake> events = generator.swarm(30, now, 120h) + generator.ordinary(14, now);
    for (const int age : {31, 45, 300, 410, 430, 700})
        events += generator.ordinary(9, now - std::chrono::days(age));
    stage.world.urlSession.enqueue(PageGenerator::page(events));
    open(stage);
    stage.key(Qt::Key_2, Qt::ControlModifier);
    stage.waitFor(QStringLiteral("history"));
}

/// Opens the history's filter sheet.
void openFilterSheet(Stage &stage)
{
    openHistory(stage);
    stage.press(QStringLiteral("filterButton"));
    stage.waitFor(QStringLiteral("filterMode"));
}

/// Until nothing fades or slides: what does takes every press.
void rest(Stage &stage)
{
    stage.picture();
}

/// The sheet's choice of a month, not yet applied.
void chooseMonth(Stage &stage)
{
    openFilterSheet(stage);
    stage.key(Qt::Key_Right);
    // Not by arrows: the pointer lies on a menu's entry, which then counts whenever the next frame notices.
    for (const char *const pressed : {"Año: Todos", "2025", "Mes: Todo el año", "Febrero"}) {
        stage.press(QString::fromUtf8(pressed));
        rest(stage);
    }
}

/// Loads the next page. The picture is the one that the history shows meanwhile, which takes no longer than a frame.
void loadMore(Stage &stage)
{
    auto &history = stage.object<HistoricoScreen>();
    bool isKept = false;
    const auto keep = [&] {
        if (!history.isLoading())
            return;
        stage.keepPicture();
        isKept = true;
    };
    const auto kept = QObject::connect(history.viewModel(), &HistoricoViewModel::isLoadingChanged, &history, keep);
    stage.press(QStringLiteral("loadMore"));
    QObject::disconnect(kept);
    if (!isKept)
        throw StageError(QStringLiteral("no page was loaded"));
}

/// The sidebar, which a narrow window folds away.
void showSidebar(Stage &stage)
{
    if (!stage.shows(QStringLiteral("Información")))
        stage.press(QStringLiteral("Mostrar/Ocultar barra lateral"));
}

/// Another section, by the shortcut of its place in the menu.
Scene::Step section(Qt::Key number)
{
    return key(number, Qt::ControlModifier);
}

/// The program's own question.
Scene::Step ask(Permissions::Subject subject)
{
    return [subject](Stage &stage) { stage.world.permissions.request(subject); };
}

void alertsOn(Stage &stage)
{
    stage.world.userDefaults.values.insert(QStringLiteral("settings.hasAskedNotifPermission"), true);
    stage.world.userDefaults.values.insert(QStringLiteral("notificationsEnabled"), true);
}

/// Every alert, with the threshold in the middle.
void allOn(Stage &stage)
{
    alertsOn(stage);
    stage.world.userDefaults.values.insert(QStringLiteral("settings.globalMagCategory"), QStringLiteral("moderate"));
    stage.world.userDefaults.values.insert(QStringLiteral("settings.locationEnabled"), true);
    stage.world.userDefaults.values.insert(QStringLiteral("settings.swarmEnabled"), true);
}

/// The user has taken the permission for notifications back.
void refused(Stage &stage)
{
    stage.world.userNotificationCenter.status = NotificationAuthorizationStatus::denied;
    stage.world.permissions.answers.insert(Permissions::Subject::notifications, Permissions::Answer::denied);
}

void positionRefused(Stage &stage)
{
    stage.world.initialLocationStatus = LocationAuthorizationStatus::denied;
}

void desktopHasSettings(Stage &stage)
{
    stage.world.workspace.notificationSettings = true;
}

void openSettings(Stage &stage)
{
    stage.key(Qt::Key_Comma, Qt::ControlModifier);
    stage.useWindow(QStringLiteral("Ajustes"));
}

void showControls(Stage &stage)
{
    stage.openPage(QUrl(QStringLiteral("qrc:/qt/qml/orvalia/Gallery/Gallery.qml")));
}

const Scene::Step search = press("Buscar por localización");
}

const std::vector<Scene> &scenes()
{
    static const std::vector<Scene> all = {
        {"list", {openFull, search, keys(6, Qt::Key_Down), answer(tenDays()), press("refreshButton"), pass(21s)}},
        {"list-rest", {openFull}},
        {"list-filter", {openFull, press("filterButton"), press("Minor"), hover("Last 24h")}},
        {"list-search", {openFull, search, type("guia"), pass(300ms)}},
        {"list-noresults", {openFull, search, type("teneguia"), pass(300ms)}},
        {"list-empty", {open}},
        {"list-loading", {noAnswerYet(), open}},
        {"list-hostile", {answer(hostilePage()), open}},
        {"sidebar", {openFull, showSidebar}},
        {"nothing-selected", {openFull, showSidebar, press("sismos", Qt::ControlModifier)}},
        {"menu", {openFull, key(Qt::Key_F10)}},
        {"menu-sections", {openFull, key(Qt::Key_F10), press("Navegar")}},
        {"about", {openFull, key(Qt::Key_F10), press("Acerca de Terremotos")}},
        {"detail", {openFull, press("row 0"), waitFor("detailMap")}},
        {"detail-at-sea", {answer(seaEvent()), open, press("row 0"), waitFor("detailMap")}},
        {"history", {openHistory}},
        {"history-end", {openHistory, scroll("history", 40)}},
        {"history-loading-more", {openHistory, scroll("history", 40), rest, loadMore}},
        {"history-filtered", {chooseMonth, press("Aplicar"), waitFor("history")}},
        {"history-noresults", {openHistory, search, type("teneguia"), pass(300ms)}},
        {"history-sheet-none", {openFilterSheet}},
        {"history-sheet-yearmonth", {chooseMonth}},
        {"history-sheet-range", {openFilterSheet, keys(2, Qt::Key_Right), press("Fecha inicio: *")}},
        {"history-sheet-change", {chooseMonth, press("Aplicar"), rest, press("filterButton"), waitFor("Mes: Febrero")}},
        {"history-sheet-refused",
         {openFilterSheet, keys(2, Qt::Key_Right), keys(2, Qt::Key_Tab), type("31/2/2025"), key(Qt::Key_Return)}},
        {"history-empty", {open, section(Qt::Key_2), waitFor("Sin resultados*")}},
        {"map", {openFull, section(Qt::Key_3), waitFor("map")}},
        {"map-zoomed",
         {openFull, section(Qt::Key_3), waitFor("map"), press("map"), key(Qt::Key_Left), keys(3, Qt::Key_Plus)}},
        {"map-selected",
         {openFull, section(Qt::Key_3), waitFor("map"), press("map"), key(Qt::Key_Right, Qt::AltModifier),
          key(Qt::Key_Return), waitFor("Ver detalle")}},
        {"map-filter", {openFull, section(Qt::Key_3), waitFor("map"), press("filterButton"), press("Major")}},
        {"map-nothing",
         {openFull, section(Qt::Key_3), waitFor("map"), press("map"), key(Qt::Key_Right, Qt::AltModifier),
          key(Qt::Key_Return), waitFor("Ver detalle"), press("filterButton"), press("Major"), key(Qt::Key_Escape)}},
        {"map-swarm", {answer(longSwarm()), open, section(Qt::Key_3), waitFor("map")}},
        {"map-swarm-zoomed",
         {answer(longSwarm()), open, section(Qt::Key_3), waitFor("map"), press("map"), key(Qt::Key_Left),
          keys(3, Qt::Key_Plus)}},
        {"map-empty", {open, section(Qt::Key_3), waitFor("map")}},
        {"info-scrolled", {openFull, key(Qt::Key_I, Qt::ControlModifier), scroll("Leve*", 30)}},
        {"stats", {openFull, section(Qt::Key_4), waitFor("Actividad Reciente")}},
        {"stats-scrolled", {openFull, section(Qt::Key_4), scroll("Actividad Reciente", 30)}},
        {"stats-old",
         {answer(oldEvents(std::chrono::days(40), false)), open, section(Qt::Key_4), waitFor("Sin datos")}},
        {"stats-one-zone",
         {answer(oldEvents(std::chrono::days(0), true)), open, section(Qt::Key_4), scroll("Actividad Reciente", 30)}},
        {"stats-empty", {open, section(Qt::Key_4), waitFor("Sin datos*")}},
        {"info", {openFull, key(Qt::Key_I, Qt::ControlModifier), waitFor("Mantén la calma*")}},
        {"permission-notifications", {openFull, ask(Permissions::Subject::notifications), waitFor("Permitir")}},
        {"permission-location",
         {alertsOn, openFull, openSettings, press("By proximity"), ask(Permissions::Subject::location),
          waitFor("Permitir")}},
        {"permissions",
         {refused, alertsOn, desktopHasSettings, openFull, openSettings, press("Open Settings"), inWindow("Permisos")}},
        {"settings-off", {openFull, openSettings}},
        {"settings-on", {refused, allOn, openFull, openSettings}},
        {"settings-on-end", {allOn, openFull, openSettings, scroll("By magnitude", 20)}},
        {"settings-location-denied", {allOn, positionRefused, openFull, openSettings, scroll("By magnitude", 2)}},
        {"settings-radius-of-none",
         {allOn, saved("settings.locationRadiusKm", 37.5), openFull, openSettings, scroll("By magnitude", 2)}},
        {"settings-picker", {openFull, openSettings, press("Frecuencia: 10 minutes")}},
        {"phone-list", {openPhone, waitFor("row 0")}, phoneSize},
        {"phone-detail", {openPhone, press("row 0"), waitFor("detailMap")}, phoneSize},
        {"phone-map", {openPhone, press("Mapa"), waitFor("map")}, phoneSize},
        {"phone-stats", {openPhone, press("Estadísticas"), waitFor("Actividad Reciente")}, phoneSize},
        {"controls", {showControls}, gallerySize},
        {"controls-search", {showControls, press("search")}, gallerySize},
        {"controls-menu", {showControls, press("menuButton"), press("Navegar")}, gallerySize},
        {"controls-picker", {showControls, press("picker")}, gallerySize},
        {"controls-calendar", {showControls, press("date")}, gallerySize},
        {"controls-sheet", {showControls, press("sheetButton")}, gallerySize},
        {"controls-question", {showControls, press("questionButton")}, gallerySize},
    };
    return all;
}
