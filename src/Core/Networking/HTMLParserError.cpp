// SPDX-License-Identifier: GPL-3.0-or-later
#include "Core/Networking/HTMLParserError.h"

#include <utility>

namespace {
QString describe(HTMLParserError::Kind kind)
{
    switch (kind) {
    case HTMLParserError::Kind::networkError:
        return QStringLiteral("Error de red: ");
    case HTMLParserError::Kind::invalidResponse:
        return QStringLiteral("Respuesta HTTP inválida");
    case HTMLParserError::Kind::noTableFound:
        return QStringLiteral("No se encontró la tabla de terremotos en la página");
    case HTMLParserError::Kind::noRowsParsed:
        return QStringLiteral("No se pudieron extraer filas de la tabla");
    }
    Q_UNREACHABLE();
}

QString describe(const std::exception_ptr &error)
{
    try {
        std::rethrow_exception(error);
    } catch (const std::exception &exception) {
        return QString::fromUtf8(exception.what());
    } catch (...) {
        return {};
    }
}
}

HTMLParserError::HTMLParserError(Kind kind)
    : HTMLParserError(kind, describe(kind), nullptr)
{
}

HTMLParserError HTMLParserError::networkError(std::exception_ptr underlying)
{
    const QString description = describe(Kind::networkError) + describe(underlying);
    return HTMLParserError(Kind::networkError, description, std::move(underlying));
}

HTMLParserError::HTMLParserError(Kind kind, const QString &description, std::exception_ptr underlying)
    : m_kind(kind)
    , m_underlying(std::move(underlying)) // NOLINT(bugprone-throw-keyword-missing): kept to be thrown later
    , m_description(description)
    , m_utf8(description.toUtf8())
{
}
