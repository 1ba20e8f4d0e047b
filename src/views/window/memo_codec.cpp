#include "views/window/memo_codec.h"

#include <QStringDecoder>
#include <QStringEncoder>
#include <QStringList>
#include <array>
#include <optional>

namespace sonalyx {

namespace {

// Windows-1252 differs from Latin-1 only in 0x80..0x9F; the five unassigned bytes map to
// their C1 control points as the system code page does.
constexpr std::array<char16_t, 32> kCp1252High = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

constexpr const char* kShiftJisName = "Shift_JIS";

QByteArrayView view(std::string_view bytes) {
    return QByteArrayView(bytes.data(), static_cast<qsizetype>(bytes.size()));
}

bool isUtf8(std::string_view bytes) {
    QStringDecoder utf8(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    const QString text = utf8(view(bytes));  // the decoder works when its result is taken
    return !utf8.hasError();
}

QString decodeCp1252(std::string_view bytes) {
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

std::optional<std::string> encodeCp1252(const QString& text) {
    std::string bytes;
    bytes.reserve(static_cast<size_t>(text.size()));
    for (const QChar c : text) {
        const char16_t u = c.unicode();
        if (u < 0x80 || (u >= 0xA0 && u <= 0xFF)) {
            bytes += static_cast<char>(u);
            continue;
        }
        const auto it = std::find(kCp1252High.begin(), kCp1252High.end(), u);
        if (it == kCp1252High.end())
            return std::nullopt;
        bytes += static_cast<char>(0x80 + (it - kCp1252High.begin()));
    }
    return bytes;
}

// Whether bytes read as Japanese text in Shift-JIS rather than as Windows-1252 that happens to
// fit its byte ranges. Valid means single bytes of ASCII or half-width katakana and pairs of
// the JIS X 0208 rows (no vendor or user-defined rows, which Windows-1252 letters such as ü
// would fall into). Plausible means at least one pair, and either kana or Japanese punctuation
// among them (leads 0x81-0x84, rare as Windows-1252 quotes) or no pair whose second byte is an
// ASCII letter (as é followed by a letter would make one).
bool readsAsShiftJis(std::string_view bytes) {
    bool pairs = false;
    bool kana = false;
    bool letterTrail = false;
    for (size_t i = 0; i < bytes.size(); ++i) {
        const auto lead = static_cast<unsigned char>(bytes[i]);
        if (lead < 0x80 || (lead >= 0xA1 && lead <= 0xDF))
            continue;
        if (!((lead >= 0x81 && lead <= 0x9F) || (lead >= 0xE0 && lead <= 0xEA)) ||
            i + 1 == bytes.size())
            return false;
        const auto trail = static_cast<unsigned char>(bytes[++i]);
        if (trail < 0x40 || trail == 0x7F || trail > 0xFC)
            return false;
        pairs = true;
        kana = kana || lead <= 0x84;
        letterTrail =
            letterTrail || (trail >= 'A' && trail <= 'Z') || (trail >= 'a' && trail <= 'z');
    }
    if (!pairs || (!kana && letterTrail))
        return false;
    QStringDecoder shiftJis(kShiftJisName, QStringDecoder::Flag::Stateless);
    if (!shiftJis.isValid())
        return false;
    const QString text = shiftJis(view(bytes));
    return !shiftJis.hasError();
}

QString decodeAs(std::string_view bytes, MemoEncoding encoding) {
    switch (encoding) {
        case MemoEncoding::Utf8:
            return QString::fromUtf8(view(bytes));
        case MemoEncoding::ShiftJis: {
            QStringDecoder shiftJis(kShiftJisName, QStringDecoder::Flag::Stateless);
            return shiftJis(view(bytes));
        }
        case MemoEncoding::Windows1252:
            break;
    }
    return decodeCp1252(bytes);
}

std::optional<std::string> encodeAs(const QString& text, MemoEncoding encoding) {
    switch (encoding) {
        case MemoEncoding::Utf8:
            return text.toStdString();
        case MemoEncoding::ShiftJis: {
            QStringEncoder shiftJis(kShiftJisName, QStringEncoder::Flag::Stateless);
            const QByteArray bytes = shiftJis(text);
            if (!shiftJis.isValid() || shiftJis.hasError())
                return std::nullopt;
            return bytes.toStdString();
        }
        case MemoEncoding::Windows1252:
            break;
    }
    return encodeCp1252(text);
}

}  // namespace

MemoEncoding MemoCodec::encodingOf(std::string_view bytes) {
    if (isUtf8(bytes))
        return MemoEncoding::Utf8;
    return readsAsShiftJis(bytes) ? MemoEncoding::ShiftJis : MemoEncoding::Windows1252;
}

MemoEncoding MemoCodec::encodingOf(const std::vector<std::string>& lines) {
    std::string all;
    for (const auto& line : lines) {
        all += line;
        all += '\n';
    }
    return encodingOf(all);
}

QString MemoCodec::decodeLine(const std::string& bytes) {
    return decodeAs(bytes, encodingOf(bytes));
}

QString MemoCodec::decode(const std::vector<std::string>& lines) {
    const MemoEncoding encoding = encodingOf(lines);
    QStringList decoded;
    for (const auto& line : lines) {
        decoded.append(decodeAs(line, encoding));
    }
    return decoded.join(QLatin1Char('\n'));
}

std::vector<std::string> MemoCodec::asUtf8(const std::vector<std::string>& lines) {
    const MemoEncoding encoding = encodingOf(lines);
    if (encoding == MemoEncoding::Utf8)
        return lines;
    std::vector<std::string> utf8;
    for (const auto& line : lines)
        utf8.push_back(decodeAs(line, encoding).toStdString());
    return utf8;
}

std::vector<std::string> MemoCodec::encode(const QString& text, int maxLines,
                                           MemoEncoding encoding) {
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
        auto bytes = encodeAs(clean, encoding);
        if (!bytes) {
            // One encoding for the whole memo: what the old one cannot hold goes as UTF-8.
            return encode(text, maxLines, MemoEncoding::Utf8);
        }
        lines.push_back(std::move(*bytes));
    }
    return lines;
}

std::vector<std::string> MemoCodec::store(const QString& text, int maxLines,
                                          const std::vector<std::string>& cameIn) {
    const MemoEncoding encoding = encodingOf(cameIn);
    auto lines = encode(text, maxLines, encoding);
    if (lines != cameIn && encode(decode(cameIn), maxLines, encoding) == lines) {
        return cameIn;  // the text is the memo's own; its bytes stay as they were
    }
    return lines;
}

}  // namespace sonalyx
