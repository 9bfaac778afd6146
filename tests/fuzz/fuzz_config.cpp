// The configuration file: any content is read, changed and read again.

#include "terminal/config/ConfigService.h"

#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QTemporaryDir>

#include <sanitizer/lsan_interface.h>

#include <cstdint>
#include <cstdlib>
#include <optional>

namespace {

void check(bool holds) {
    if (!holds) {
        std::abort();
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    static const QTemporaryDir folder;
    const QString path = folder.filePath("config.json");
    const QByteArray content(reinterpret_cast<const char *>(data), static_cast<int>(size));
    {
        QFile file(path);
        check(file.open(QIODevice::WriteOnly) && file.write(content) == content.size());
    }
    // Qt's JSON reader leaks what it has read of a malformed text; leaks of all other texts are looked for.
    std::optional<__lsan::ScopedDisabler> leaksOfQt;
    leaksOfQt.emplace();
    const bool isObject = QJsonDocument::fromJson(content).isObject();
    if (isObject) {
        leaksOfQt.reset();
    }
    {
        terminal::ConfigService service(path);
        check(service.messages().isEmpty() == isObject);
        check(QFileInfo::exists(path + ".damaged") != isObject);
        service.indexUserConfig().write(service.indexUserConfig().read());
        service.setNumbers("formulas", "MACD", {{"SHORT", 12.0}});
        service.setValue("theme", "light");
    }
    terminal::ConfigService again(path);
    check(again.messages().isEmpty());
    check(again.value("theme") == "light" && again.numbers("formulas", "MACD").value("SHORT") == 12.0);
    QFile::remove(path + ".damaged");
    return 0;
}
