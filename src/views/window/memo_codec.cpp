#include "views/window/memo_codec.h"

#include <QStringDecoder>
#include <QStringList>
#include <array>

namespace sonalyx {

namespace {

// Windows-1252 differs from Latin-1 only in 0x80..0x9F; the five unassigned bytes map to
// their C1 control points as the system code page does.
constexpr std::array<char16_t, 32> kCp1252High = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

QString decodeCp1252(const std::string& bytes) {
    QString text;
    text.reserve(static_cast<qsizetype>(bytes.size()));
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte >= 0x80 && byte < 0xA0) {
            text.append(QChar(kCp1252High[byte - 0x80]));
        } else {
            text.append(QChar(static_cast<char16_t>(byte)));
        }
    }
    return text;
}

}  // namespace

QString MemoCodec::decodeLine(const std::string& bytes) {
    QStringDecoder utf8(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    const QString text = utf8(QByteArrayView(bytes.data(), static_cast<qsizetype>(bytes.size())));
    return utf8.hasError() ? decodeCp1252(bytes) : text;
}

std::string MemoCodec::encodeLine(const QString& text) {
    return text.toStdString();
}

QString MemoCodec::decode(const std::vector<std::string>& lines) {
    QStringList decoded;
    for (const auto& line : lines) {
        decoded.append(decodeLine(line));
    }
    return decoded.join(QLatin1Char('\n'));
}

std::vector<std::string> MemoCodec::encode(const QString& text, int maxLines) {
    std::vector<std::string> lines;
    if (text.isEmpty()) {
        return lines;
    }
    QStringList split = text.split(QLatin1Char('\n'));
    if (split.size() > 1 && split.back().isEmpty()) {
        split.removeLast();
    }
    for (const QString& line : split) {
        if (static_cast<int>(lines.size()) == maxLines) {
            break;
        }
        QString clean = line;
        clean.remove(QLatin1Char('\r'));
        lines.push_back(encodeLine(clean));
    }
    return lines;
}

}  // namespace sonalyx
