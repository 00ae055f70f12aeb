#pragma once

#include <tl/expected.hpp>

#include <QString>

/// Why work gave no result.
struct Failure {
    QString text;         ///< a sentence for the user; may be empty if it was stopped
    bool stopped = false; ///< asked to stop, which is no fault

    bool operator==(const Failure &) const = default;
};

/// What work gives back: its outcome, or why there is none.
template <typename T> using Result = tl::expected<T, Failure>;

/// The other outcome of a Result: `return failed(tr("..."));`
[[nodiscard]] inline tl::unexpected<Failure> failed(QString text)
{
    return tl::unexpected<Failure>(Failure{std::move(text), false});
}

/// The outcome of work that was asked to stop.
[[nodiscard]] inline tl::unexpected<Failure> stopped()
{
    return tl::unexpected<Failure>(Failure{QString(), true});
}
