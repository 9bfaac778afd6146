#include "terminal/app/FillBehind.h"

#include "terminal/app/BackgroundJob.h"
#include "terminal/app/ProgressTeller.h"
#include "terminal/app/TerminalServices.h"
#include "terminal/threads/ThreadStart.h"

#include <QEventLoop>

namespace terminal {

QString fillBehind(TerminalServices &services) {
    QString error = noThreadText();
    {
        ProgressTeller teller(QObject::tr("正在生成行情库"), true);
        QEventLoop loop;
        BackgroundJob job;
        QObject::connect(&job, &BackgroundJob::progressed, &loop, [&] {
            if (!teller.tell(job.done(), job.total())) {
                job.stop();
            }
        });
        QObject::connect(&job, &BackgroundJob::finished, &loop, &QEventLoop::quit);
        job.start([&services, &error](BackgroundJob &work) {
            error = services.fill([&work](int done, int total) {
                work.tell(done, total);
                return !work.isStopped();
            });
        });
        loop.exec();
    } // the work has ended
    if (error.isEmpty()) {
        services.begin();
    }
    return error;
}

} // namespace terminal
