#include "views/noticelabel.h"

#include <QEvent>

#include <algorithm>
#include <chrono>

namespace {

constexpr std::chrono::minutes AWhile(1);
constexpr int ShortestText = 12; // characters that are left of a notice cut short

} // namespace

NoticeLabel::NoticeLabel(QWidget *bar) : QLabel(bar), m_bar(bar)
{
    setObjectName(QStringLiteral("labelNotice"));
    setAccessibleName(tr("Notice"));
    setWhatsThis(tr("Tells why something could not be done. It goes when you begin "
                    "something else. The tool tip has the whole sentence."));
    setTextFormat(Qt::PlainText); // names of files are no markup
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    m_end.setSingleShot(true);
    m_end.setInterval(AWhile);
    connect(&m_end, &QTimer::timeout, this, [this] {
        dismiss();
        emit ended();
    });
    bar->installEventFilter(this);
    hide();
}

void NoticeLabel::tell(const QString &text, NoticeStay stay)
{
    m_notice = text;
    setToolTip(Qt::mightBeRichText(text) ? text.toHtmlEscaped() : text);
    setAccessibleDescription(text);
    m_end.stop();
    if (stay == NoticeStay::AWhile)
        m_end.start();
    updateGeometry();
    elide();
    setVisible(!text.isEmpty());
}

void NoticeLabel::dismiss() { tell(QString(), NoticeStay::UntilNextWork); }

void NoticeLabel::setTaken(int width)
{
    m_taken = width;
    updateGeometry();
}

QSize NoticeLabel::sizeHint() const
{
    const int text = fontMetrics().horizontalAdvance(m_notice) + 2 * margin() + 2;
    const int most = m_bar->width() * 3 / 5 - m_taken;
    return {std::max(std::min(text, most), minimumSizeHint().width()),
            QLabel::sizeHint().height()};
}

QSize NoticeLabel::minimumSizeHint() const
{
    const int shortest = fontMetrics().averageCharWidth() * ShortestText;
    const int text = fontMetrics().horizontalAdvance(m_notice) + 2 * margin() + 2;
    return {std::min(text, shortest), QLabel::minimumSizeHint().height()};
}

void NoticeLabel::resizeEvent(QResizeEvent *event)
{
    QLabel::resizeEvent(event);
    elide();
}

void NoticeLabel::changeEvent(QEvent *event)
{
    QLabel::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        elide();
}

bool NoticeLabel::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Resize)
        updateGeometry(); // its part of the bar is another now
    return QLabel::eventFilter(watched, event);
}

void NoticeLabel::elide()
{
    const QString shown =
        fontMetrics().elidedText(m_notice, Qt::ElideRight, contentsRect().width());
    if (shown != text())
        setText(shown);
}
