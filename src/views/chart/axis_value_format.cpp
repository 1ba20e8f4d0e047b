#include "views/chart/axis_value_format.h"

#include <charconv>
#include <cmath>
#include <string>

namespace sonalyx::chart {

namespace {

struct Picture {
    bool grouping = false;
    int minDecimals = 0;
    int maxDecimals = 0;
};

Picture readPicture(const QString& picture) {
    Picture result;
    const qsizetype point = picture.indexOf(QLatin1Char('.'));
    const QString integerPart = point < 0 ? picture : picture.left(point);
    result.grouping = integerPart.contains(QLatin1Char(','));
    if (point >= 0) {
        for (qsizetype i = point + 1; i < picture.size(); ++i) {
            const QChar c = picture.at(i);
            if (c == QLatin1Char('0')) {
                result.minDecimals = ++result.maxDecimals;
            } else if (c == QLatin1Char('#')) {
                ++result.maxDecimals;
            } else {
                break;
            }
        }
    }
    return result;
}

}  // namespace

QString formatAxisValue(double value, const QString& picture) {
    if (!std::isfinite(value)) {
        return QString();
    }
    const Picture p = readPicture(picture);
    char buffer[400];
    const auto [end, ec] = std::to_chars(buffer, buffer + sizeof buffer, value,
                                         std::chars_format::fixed, p.maxDecimals);
    if (ec != std::errc()) {
        return QString();
    }
    std::string text(buffer, end);
    const std::size_t point = text.find('.');
    if (point != std::string::npos) {
        std::size_t keep = text.size();
        while (keep > point + 1 + static_cast<std::size_t>(p.minDecimals) &&
               text[keep - 1] == '0') {
            --keep;
        }
        if (keep == point + 1) {
            --keep;  // no decimals left: no point either
        }
        text.resize(keep);
    }
    // Rounding may leave "-0" or "-0.0": a zero has no sign on an axis.
    if (text.front() == '-' && text.find_first_not_of("0.", 1) == std::string::npos) {
        text.erase(0, 1);
    }
    if (p.grouping) {
        const std::size_t digitsStart = text.front() == '-' ? 1 : 0;
        std::size_t digitsEnd = text.find('.');
        if (digitsEnd == std::string::npos) {
            digitsEnd = text.size();
        }
        for (std::size_t at = digitsEnd; at > digitsStart + 3; at -= 3) {
            text.insert(at - 3, 1, ',');
        }
    }
    return QString::fromLatin1(text.data(), static_cast<qsizetype>(text.size()));
}

}  // namespace sonalyx::chart
