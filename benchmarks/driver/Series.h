// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <vector>

/// Repeated measurements of one quantity.
class Series
{
public:
    void add(double value);

    /// All values, multiplied by \a factor.
    Series times(double factor) const;

    bool isEmpty() const { return m_values.empty(); }

    double median() const { return quantile(0.5); }
    double lowerQuartile() const { return quantile(0.25); }
    double upperQuartile() const { return quantile(0.75); }
    double largest() const { return quantile(1.0); }

private:
    /// Interpolates linearly; 0 for an empty series.
    double quantile(double share) const;

    std::vector<double> m_values; ///< in ascending order
};
