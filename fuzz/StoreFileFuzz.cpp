// SPDX-License-Identifier: GPL-3.0-or-later
#include "Core/Persistence/EarthquakeQuery.h"
#include "Core/Persistence/ModelContainer.h"
#include "Core/Persistence/ModelContext.h"
#include "Fuzz.h"

namespace {
const QString newID = QStringLiteral("new");

void useStore(ModelContainer &container)
{
    ModelContext &context = container.mainContext();
    container.earthquakes();
    try {
        context.fetchCount({});
        context.fetch({.sort = FetchDescriptor::Sort::dateReverse});
        context.newestDateOfEachYear();
    } catch (const StoreError &) {
    }
    context.insert({newID, Instant{}, 28, -16, 1, 2, QStringLiteral("mbLg"), std::nullopt, newID, Instant{}});
    try {
        context.save();
    } catch (const StoreError &) {
        require(context.hasChanges());
    }
    require(context.hasChanges() || !container.earthquakes().isEmpty());
}
}

/// Takes any bytes as the file of the store: it is refused and left as it is, or serves as far as it can be read.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QString path = freshPath();
    const QByteArray bytes = bytesOf(data, size);
    writeFile(path, bytes);
    std::unique_ptr<ModelContainer> container;
    try {
        container = std::make_unique<ModelContainer>(ModelContainer::Configuration{.path = path});
    } catch (const StoreError &) {
        require(readFile(path) == bytes);
    }
    if (container)
        useStore(*container);
    container.reset();
    for (const char *end : {"", "-wal", "-shm", "-journal"})
        QFile::remove(path + QLatin1String(end));
    return 0;
}
