// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include "Platform/Appearance/Appearance.h"
#include "Platform/BackgroundActivity/BackgroundActivityScheduler.h"
#include "Platform/Location/LocationService.h"
#include "Platform/Permissions/Permissions.h"
#include "Platform/UserNotifications/UserNotificationCenter.h"
#include "Platform/Workspace/Workspace.h"

#include <QMap>
#include <QPromise>

#include <exception>
#include <functional>
#include <memory>
#include <optional>
#include <stdexcept>
#include <utility>
#include <vector>

/// Records what was sent with the user's permission; asking for it fails until a test sets an answer. With
/// `holdsAnswer` the question stays open until giveAnswer().
class FakeUserNotificationCenter : public UserNotificationCenter
{
public:
    QFuture<bool> requestAuthorization() override
    {
        ++authorizationRequests;
        if (!holdsAnswer && !answer)
            return QtFuture::makeExceptionalFuture<bool>(
                std::make_exception_ptr(std::runtime_error("no notification service")));
        QPromise<bool> &question = m_open.emplace_back();
        question.start();
        QFuture<bool> future = question.future();
        if (!holdsAnswer)
            giveAnswer(*answer);
        return future;
    }

    /// What the user says.
    void giveAnswer(bool value)
    {
        status = value ? NotificationAuthorizationStatus::authorized : NotificationAuthorizationStatus::denied;
        for (QPromise<bool> &question : std::exchange(m_open, {})) {
            question.addResult(value);
            question.finish();
        }
    }

    QFuture<NotificationAuthorizationStatus> authorizationStatus() override
    {
        return QtFuture::makeReadyFuture(status);
    }

    void add(const UserNotificationRequest &request) override
    {
        if (status == NotificationAuthorizationStatus::authorized)
            sent.push_back(request);
    }

    std::optional<bool> answer;
    bool holdsAnswer = false;
    NotificationAuthorizationStatus status = NotificationAuthorizationStatus::notDetermined;
    int authorizationRequests = 0;
    std::vector<UserNotificationRequest> sent;

private:
    std::vector<QPromise<bool>> m_open;
};

/// A position service that a test drives by hand.
class FakeLocationService : public LocationService
{
public:
    explicit FakeLocationService(QObject *parent = nullptr)
        : LocationService(parent)
    {
        QMetaObject::invokeMethod(this, &FakeLocationService::authorizationChanged, Qt::QueuedConnection);
    }

    /// What the user or the system does to the permission.
    void change(LocationAuthorizationStatus value)
    {
        status = value;
        QMetaObject::invokeMethod(this, &FakeLocationService::authorizationChanged, Qt::QueuedConnection);
    }

    LocationAuthorizationStatus authorizationStatus() const override { return status; }
    void setDistanceFilter(double meters) override { distanceFilter = meters; }
    void requestAlwaysAuthorization() override { ++permissionRequests; }
    void startUpdatingLocation() override { ++starts; }

    LocationAuthorizationStatus status = LocationAuthorizationStatus::notDetermined;
    double distanceFilter = 0;
    int permissionRequests = 0;
    int starts = 0;
};

/// Remembers answers in memory.
class FakePermissions : public Permissions
{
public:
    using Permissions::Permissions;

    Answer answer(Subject subject) const override { return answers.value(subject, Answer::notDetermined); }

    QMap<Subject, Answer> answers;

protected:
    void remember(Subject subject, Answer given) override { answers.insert(subject, given); }
};

/// Remembers what it was asked to open.
class FakeWorkspace : public Workspace
{
public:
    bool open(const QUrl &url) override
    {
        opened.push_back(url);
        return opens && opens(url);
    }

    bool hasNotificationSettings() const override { return notificationSettings; }

    bool openNotificationSettings() override
    {
        ++notificationSettingsOpened;
        return notificationSettings;
    }

    std::vector<QUrl> opened;
    /// Takes an address; nothing takes any where this is empty.
    std::function<bool(const QUrl &)> opens;
    bool notificationSettings = false;
    int notificationSettingsOpened = 0;
};

/// A desktop whose look a test changes by hand; light and in full motion at first.
class FakeAppearance : public Appearance
{
public:
    using Appearance::Appearance;

    ColorScheme colorScheme() const override { return m_colorScheme; }
    bool reducedMotion() const override { return m_reducedMotion; }
    bool hasMenuBar() const override { return m_hasMenuBar; }

    void setColorScheme(ColorScheme value)
    {
        m_colorScheme = value;
        Q_EMIT changed();
    }

    void setReducedMotion(bool value)
    {
        m_reducedMotion = value;
        Q_EMIT changed();
    }

    void setMenuBar(bool value)
    {
        m_hasMenuBar = value;
        Q_EMIT changed();
    }

private:
    ColorScheme m_colorScheme = ColorScheme::light;
    bool m_reducedMotion = false;
    bool m_hasMenuBar = false;
};

/// An activity that runs when a test says so.
class FakeBackgroundActivityScheduler : public BackgroundActivityScheduler
{
public:
    void setRepeats(bool value) override { repeats = value; }
    void setInterval(double seconds) override { interval = seconds; }
    void setTolerance(double seconds) override { tolerance = seconds; }
    void setQualityOfService(QualityOfService value) override { quality = value; }
    void scheduleWithBlock(std::function<void(CompletionHandler)> value) override { block = std::move(value); }
    void invalidate() override { onInvalidate(); }

    QString identifier;
    bool repeats = false;
    double interval = 0;
    double tolerance = 0;
    QualityOfService quality = QualityOfService::background;
    std::function<void(CompletionHandler)> block;
    std::function<void()> onInvalidate = [] {};
};
