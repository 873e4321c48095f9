// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include "Platform/Support/Instant.h"

#include <QString>

#include <memory>

/// Texts from instants, by a pattern or by the fields wanted (ICU). Making one costs about 250 us, formatting one:
/// keep formatters. Not to be shared between threads.
class DateFormatter
{
public:
    /// Where the pattern comes from.
    enum class Form {
        pattern, ///< fields and literals as they stand, such as "d MMM yyyy"
        skeleton ///< the fields wanted, in the order and with the separators of the locale
    };

    /// In the user's locale; in the user's zone unless `zone` names another, such as "UTC". An unknown zone stops the
    /// program: it can only be a broken installation.
    DateFormatter(Form form, const QString &text, const QString &zone = {});
    ~DateFormatter();
    DateFormatter(DateFormatter &&) noexcept;
    DateFormatter &operator=(DateFormatter &&) noexcept;

    QString string(Instant instant) const;

private:
    struct Private;
    std::unique_ptr<Private> d;
};
