#pragma once

#include <QString>

#include <mutex>

/// Standard error of a command: messages, and a line that tells how far the work is,
/// which on a terminal is written over again. May be used by several threads.
class Console {
public:
    enum class Talk {
        All,
        ErrorsOnly, ///< no progress and no findings
    };

    explicit Console(Talk talk = Talk::All);

    /// What the user has to know: a failure, a question that was answered, a warning.
    void error(const QString &text);
    /// A question that an option of this name has answered Yes, or that is answered No.
    void question(const QString &text, bool yes, const QString &option);
    /// What a window would tell or list beside its work.
    void message(const QString &text);
    /// How far the work is. On a terminal the line stands until the next one, or until
    /// something else is told; elsewhere it is a line like others.
    void progress(const QString &text);
    /// Takes the line of the progress away from a terminal.
    void endProgress();
    /// For a program that ends at once, while other threads may be writing: tells the
    /// text if that can be done without waiting.
    void lastWord(const QString &text);

    [[nodiscard]] bool isTerminal() const { return m_isTerminal; }
    [[nodiscard]] bool tellsAll() const { return m_talk == Talk::All; }
    void setTalk(Talk talk) { m_talk = talk; }

private:
    void clearLine();

    std::mutex m_mutex;
    Talk m_talk;
    const bool m_isTerminal;
    bool m_lineStands = false; // of the progress
};
