// SPDX-License-Identifier: GPL-3.0-or-later
#include "Core/DataSources/EarthquakeDataSource.h"
#include "Core/Models/Region.h"
#include "Core/Notifications/NotificationSettings.h"
#include "Core/Persistence/EarthquakeQuery.h"
#include "Core/Persistence/PersistenceController.h"
#include "Core/Repositories/EarthquakeRepository.h"
#include "Core/ViewModels/EarthquakeListViewModel.h"
#include "DetouredURLSession.h"
#include "PageGenerator.h"
#include "Platform/NotificationCenter/NotificationCenter.h"
#include "Platform/Support/Platform.h"
#include "Platform/URLSession/NetworkURLSession.h"
#include "Platform/UserDefaults/SettingsUserDefaults.h"
#include "Support/FakeClock.h"
#include "Support/FakePlatform.h"
#include "Support/LoopbackServer.h"

#include <QDir>
#include <QFileInfo>
#include <QNetworkProxyFactory>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <malloc.h>

#ifdef __SANITIZE_ADDRESS__
extern "C" size_t __sanitizer_get_current_allocated_bytes();
#endif

using namespace std::chrono_literals;

namespace {
/// Bytes that are in use on the heap; glibc counts what its caches hold ready as well, so they are to be off.
size_t heap()
{
#ifdef __SANITIZE_ADDRESS__
    return __sanitizer_get_current_allocated_bytes();
#else
    const struct mallinfo2 info = mallinfo2();
    return info.uordblks + info.hblkhd;
#endif
}

qsizetype descriptors()
{
    return QDir(QStringLiteral("/proc/self/fd")).entryList(QDir::Files | QDir::System).size();
}
}

/// The program without its window, over the real session, store and settings, through a month of refreshes whose time
/// is compressed.
class ThirtyDaysTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void memoryAndDescriptorsStayFlat()
    {
        QNetworkProxyFactory::setUseSystemConfiguration(false);
        if (QFileInfo(QStringLiteral("/dev/shm")).isWritable())
            qputenv("TMPDIR", "/dev/shm");
        const QTemporaryDir folder;
        FakeClock clock;
        SettingsUserDefaults userDefaults(folder.filePath(QStringLiteral("settings.ini")));
        LoopbackServer server;
        const QString path = QStringLiteral("/page");
        NetworkURLSession network(clock);
        DetouredURLSession session(network, Region::canaryIslands().dataSourceURL, server.url(path));
        NotificationCenter notificationCenter;
        FakeUserNotificationCenter userNotificationCenter;
        userNotificationCenter.status = NotificationAuthorizationStatus::authorized;
        FakePermissions permissions;
        FakeWorkspace workspace;
        FakeAppearance appearance;
        Platform platform{
            .clock = clock,
            .userDefaults = userDefaults,
            .urlSession = session,
            .notificationCenter = notificationCenter,
            .userNotificationCenter = userNotificationCenter,
            .permissions = permissions,
            .workspace = workspace,
            .appearance = appearance,
            .makeLocationService = [] { return std::make_unique<FakeLocationService>(); },
            .makeBackgroundActivityScheduler =
                [](const QString &) { return std::make_unique<FakeBackgroundActivityScheduler>(); },
            .storePath = folder.filePath(QStringLiteral("store.sqlite")),
        };
        Platform::install(platform);
        {
            NotificationSettings::shared().setIsEnabled(true);
            NotificationSettings::shared().setSwarmNotificationsEnabled(true);
            NotificationSettings::shared().setRefreshInterval(RefreshInterval::thirtyMinutes);
            ModelContainer &container = PersistenceController::shared().container();
            const EarthquakeQuery &query = container.earthquakes();
            EarthquakeRepository repository(container.mainContext());
            EarthquakeListViewModel list(repository);
            list.onAppear(container.mainContext());

            QSignalSpy ended(&repository, &EarthquakeRepository::isLoadingChanged);
            PageGenerator generator(1);
            QList<ParsedEarthquake> rows = generator.ordinary(80, clock.now());
            constexpr int refreshesADay = 24 * 2;
            size_t warmHeap = 0;
            qsizetype warmDescriptors = 0;
            for (int refresh = 0; refresh <= 30 * refreshesADay; ++refresh) {
                // An event every three hours; the page keeps its length.
                if (refresh % 6 == 0) {
                    rows.prepend(generator.ordinaryEvent(clock.now()));
                    rows.removeLast();
                }
                server.reset();
                server.answer(path, LoopbackServer::page(PageGenerator::page(rows)));
                // Not advance(): the patience of a transfer that begins in it must not end in it.
                clock.suspend(30min);
                QVERIFY(repository.isLoading());
                QVERIFY(ended.wait(60'000));
                clock.settle();
                QVERIFY(!repository.isLoading() && !repository.lastError());
                userNotificationCenter.sent.clear();
                ended.clear();
                if (refresh == 10 * refreshesADay) {
                    QTRY_COMPARE(server.openConnections(), 0);
                    warmHeap = heap();
                    warmDescriptors = descriptors();
                }
            }
            QCOMPARE(query.count(), qsizetype(79 + 30 * 8 + 1));
            const QByteArray figures = QByteArray::number(warmHeap) + " bytes, then " + QByteArray::number(heap());
            // The 160 events since, which the program keeps for good, are in it.
            QVERIFY2(double(heap()) <= 1.05 * double(warmHeap), figures);
            QTRY_VERIFY(descriptors() <= warmDescriptors);
        }
        Platform::uninstall();
    }
};

QTEST_GUILESS_MAIN(ThirtyDaysTest)
#include "ThirtyDaysTest.moc"
