// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "benchmarks/driver/Series.h"

#include <algorithm>
#include <cmath>

void Series::add(double value)
{
    m_values.insert(std::upper_bound(m_values.begin(), m_values.end(), value), value);
}

Series Series::times(double factor) const
{
    Series result;
    for (const double value : m_values) {
        result.add(value * factor);
    }
    return result;
}

double Series::quantile(double share) const
{
    if (m_values.empty()) {
        return 0;
    }
    const double position = share * static_cast<double>(m_values.size() - 1);
    const auto below = static_cast<std::size_t>(std::floor(position));
    const std::size_t above = std::min(below + 1, m_values.size() - 1);
    const double weight = position - static_cast<double>(below);
    return m_values[below] * (1 - weight) + m_values[above] * weight;
}
