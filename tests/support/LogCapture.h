#pragma once

#include <QString>
#include <QStringList>

#include <memory>

namespace tests {

/// Catches what the chart view writes to its log while it lives.
class LogCapture {
public:
    LogCapture();
    ~LogCapture();
    LogCapture(const LogCapture &) = delete;
    LogCapture &operator=(const LogCapture &) = delete;

    /// The lines so far.
    QStringList lines() const;
    /// Those that contain a text.
    QStringList with(const QString &text) const;
    /// Source file and level of the last line.
    QString lastSource() const;
    int lastLevel() const;
    void clear();

private:
    struct Private;
    std::unique_ptr<Private> mCapture;
};

} // namespace tests
