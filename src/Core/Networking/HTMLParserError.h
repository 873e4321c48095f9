// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include <QByteArray>
#include <QString>

#include <exception>

/// Why a source page gave no events.
class HTMLParserError : public std::exception
{
public:
    enum class Kind {
        networkError, ///< carries an underlying error
        invalidResponse, ///< no HTTP answer, or a status outside 200 to 299
        noTableFound, ///< the page holds no data row
        noRowsParsed ///< the page holds data rows, none of them usable
    };

    /// An error of any kind but networkError, which has a factory of its own.
    explicit HTMLParserError(Kind kind);
    /// Wraps `underlying`, which must not be null. Transport errors reach the repository unwrapped; this is for sources
    /// that have a reason to tell them apart.
    static HTMLParserError networkError(std::exception_ptr underlying);

    Kind kind() const { return m_kind; }
    /// What networkError() wrapped; null for every other kind.
    std::exception_ptr underlyingError() const { return m_underlying; }
    /// For people; Spanish whatever the locale.
    QString localizedDescription() const { return m_description; }
    /// localizedDescription() as UTF-8.
    const char *what() const noexcept override { return m_utf8.constData(); }

private:
    HTMLParserError(Kind kind, const QString &description, std::exception_ptr underlying);

    Kind m_kind;
    std::exception_ptr m_underlying;
    QString m_description;
    QByteArray m_utf8;
};
