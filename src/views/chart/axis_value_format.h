#pragma once

#include <QString>

namespace sonalyx::chart {

// Writes an axis value with a picture such as "#,##0.0##": a ',' in the integer part groups
// thousands with ',', the '0's after the point are decimals always shown and the '#'s further
// decimals shown when they are not zero. Always a full stop, whatever the user's locale.
QString formatAxisValue(double value, const QString& picture);

}  // namespace sonalyx::chart
