// SPDX-License-Identifier: GPL-3.0-or-later
#include "Core/Networking/HTMLParser.h"
#include "Fuzz.h"

#include <cmath>
/// Takes any bytes as the body of an answer: the outcome is a list that keeps the parser's promises, or one of its two
/// errors about the page.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray page = HTMLParser::decoded(bytesOf(data, size));
    require(page.isValidUtf8());
    try {
        const QList<ParsedEarthquake> events = HTMLParser::parseTable(page);
        require(!events.isEmpty());
        for (const ParsedEarthquake &event : events) {
            require(!event.eventID.isEmpty() && !event.magnitudeType.isEmpty());
            require(!event.maxIntensity || !event.maxIntensity->isEmpty());
            require(std::isfinite(event.latitude) && std::isfinite(event.longitude));
            require(std::isfinite(event.depth) && std::isfinite(event.magnitude));
        }
    } catch (const HTMLParserError &error) {
        require(error.kind() == HTMLParserError::Kind::noTableFound
                || error.kind() == HTMLParserError::Kind::noRowsParsed);
    }
    return 0;
}
