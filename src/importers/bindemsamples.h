#pragma once

#include "importers/importlosses.h"

#include <QByteArray>

#include <memory>

struct BinDemHeader;
struct BinDemOptions;
struct StoredRange;

/// Turns rows of raw samples into rows of an elevation image.
class BinDemSamples {
public:
    virtual ~BinDemSamples() = default;

    /// Converts a row; `pixels` has three bytes for each sample.
    virtual void convert(const QByteArray &row, uchar *pixels) = 0;
    /// Adds the lowest and the highest elevation of all rows so far.
    virtual void addRange(StoredRange *range) const = 0;
    /// Of all rows so far.
    [[nodiscard]] const ImportLosses &losses() const { return m_losses; }

protected:
    ImportLosses m_losses;
};

/// The conversion for a header's sample size; null for a size that is none.
[[nodiscard]] std::unique_ptr<BinDemSamples>
makeSampleConverter(const BinDemHeader &header, const BinDemOptions &options);
