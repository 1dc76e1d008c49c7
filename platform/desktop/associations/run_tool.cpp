#include "platform/desktop/associations/run_tool.h"

#include <QProcess>
#include <QString>
#include <QStringList>

namespace platform::desktop {

bool RunTool(const std::vector<std::string>& command, std::chrono::milliseconds longest) {
    QStringList arguments;
    for (std::size_t i = 1; i < command.size(); ++i) {
        arguments << QString::fromStdString(command[i]);
    }
    QProcess process;
    process.setStandardInputFile(QProcess::nullDevice());
    process.setStandardOutputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    process.start(QString::fromStdString(command.front()), arguments);
    if (!process.waitForFinished(static_cast<int>(longest.count()))) {
        process.kill();
        process.waitForFinished(static_cast<int>(longest.count()));
        return false;
    }
    return process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
}

}  // namespace platform::desktop
