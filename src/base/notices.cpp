#include "base/notices.h"

#include <mutex>
#include <utility>

namespace {

std::mutex mutex;

NoticeSink &currentSink()
{
    static NoticeSink sink;
    return sink;
}

} // namespace

NoticeSink setNoticeSink(NoticeSink sink)
{
    const std::lock_guard lock(mutex);
    return std::exchange(currentSink(), std::move(sink));
}

void tellNotice(const QString &text, NoticeStay stay)
{
    NoticeSink sink;
    {
        const std::lock_guard lock(mutex);
        sink = currentSink();
    }
    if (sink)
        sink(text, stay);
}
