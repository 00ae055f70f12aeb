#pragma once

#include <QString>

#include <functional>

/// How long a notice is shown where there is a place to show it: for a minute, or, for
/// what happens while nobody looks, until the user begins something else.
enum class NoticeStay { AWhile, UntilNextWork };

/// Where sentences go that explain more than a message box tells, and that must not
/// open one: the right side of the main window's status bar, or standard error.
///
/// One place for the whole program, which its main window or main() sets. May be called
/// from every thread; the sink sees to it that the text reaches the thread that shows it.
using NoticeSink = std::function<void(const QString &text, NoticeStay stay)>;

/// Sets the sink; an empty one takes the notices to nowhere. The former one is returned.
NoticeSink setNoticeSink(NoticeSink sink);

/// Hands a sentence to the sink.
void tellNotice(const QString &text, NoticeStay stay = NoticeStay::AWhile);
