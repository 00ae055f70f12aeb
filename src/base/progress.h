#pragma once

#include <QtGlobal>

/// Told by work that takes long how far it is, and asked whether it may go on.
///
/// One way for runs, importers and tools. Called on the thread that works, a few hundred
/// times in all or some times a second, never for each pixel.
class Progress {
public:
    virtual ~Progress() = default;
    /// `done` of `of` steps lie behind the work; where `of` is 0 nobody knows how many
    /// there will be. False asks it to end as soon as it can, with nothing to show.
    [[nodiscard]] virtual bool step(qint64 done, qint64 of) = 0;

protected:
    Progress() = default;
    Progress(const Progress &) = default;
    Progress &operator=(const Progress &) = default;
};

/// For work that nobody watches.
class NoProgress final : public Progress {
public:
    [[nodiscard]] bool step(qint64, qint64) override { return true; }
};
