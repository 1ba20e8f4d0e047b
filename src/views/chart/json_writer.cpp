#include "views/chart/json_writer.h"

#include <charconv>
#include <cmath>

namespace sonalyx::chart {

namespace {

constexpr int kIndent = 2;

}  // namespace

std::string JsonWriter::quoted(std::string_view utf8) {
    std::string out;
    out.reserve(utf8.size() + 2);
    out += '"';
    for (const char ch : utf8) {
        const auto c = static_cast<unsigned char>(ch);
        switch (c) {
            case '"':
                out += "\\\"";
                break;
            case '\\':
                out += "\\\\";
                break;
            case '\n':
                out += "\\n";
                break;
            case '\r':
                out += "\\r";
                break;
            case '\t':
                out += "\\t";
                break;
            case '\b':
                out += "\\b";
                break;
            case '\f':
                out += "\\f";
                break;
            default:
                if (c < 0x20) {
                    static const char hex[] = "0123456789abcdef";
                    out += "\\u00";
                    out += hex[c >> 4];
                    out += hex[c & 15];
                } else {
                    out += ch;  // bytes from 0x80 on are UTF-8 text and stay as they are
                }
        }
    }
    out += '"';
    return out;
}

std::string JsonWriter::number(double value) {
    if (!std::isfinite(value)) {
        return "null";  // JSON has no infinity or NaN
    }
    char buffer[32];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, value);
    return std::string(buffer, result.ptr);
}

void JsonWriter::newline() {
    out_ += '\n';
    out_.append(levels_.size() * kIndent, ' ');
}

void JsonWriter::beforeValue() {
    if (afterKey_) {
        afterKey_ = false;
        return;
    }
    if (levels_.empty()) {
        return;
    }
    Level& level = levels_.back();
    if (!level.empty) {
        out_ += ',';
        if (level.layout == Layout::Inline) {
            out_ += ' ';
        }
    }
    level.empty = false;
    if (level.layout == Layout::Block) {
        newline();
    }
}

void JsonWriter::open(char bracket, Layout layout) {
    beforeValue();
    // Inside an inline container everything stays on the line.
    if (!levels_.empty() && levels_.back().layout == Layout::Inline) {
        layout = Layout::Inline;
    }
    out_ += bracket;
    levels_.push_back({layout});
}

void JsonWriter::close(char bracket) {
    const Level level = levels_.back();
    levels_.pop_back();
    if (level.layout == Layout::Block && !level.empty) {
        newline();
    }
    out_ += bracket;
    if (levels_.empty()) {
        out_ += '\n';
    }
}

JsonWriter& JsonWriter::beginObject(Layout layout) {
    open('{', layout);
    return *this;
}

JsonWriter& JsonWriter::endObject() {
    close('}');
    return *this;
}

JsonWriter& JsonWriter::beginArray(Layout layout) {
    open('[', layout);
    return *this;
}

JsonWriter& JsonWriter::endArray() {
    close(']');
    return *this;
}

JsonWriter& JsonWriter::key(std::string_view name) {
    beforeValue();
    out_ += quoted(name);
    out_ += ": ";
    afterKey_ = true;
    return *this;
}

JsonWriter& JsonWriter::value(double number) {
    beforeValue();
    out_ += JsonWriter::number(number);
    return *this;
}

JsonWriter& JsonWriter::integer(long long number) {
    beforeValue();
    char buffer[24];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, number);
    out_.append(buffer, result.ptr);
    return *this;
}

JsonWriter& JsonWriter::value(bool flag) {
    beforeValue();
    out_ += flag ? "true" : "false";
    return *this;
}

JsonWriter& JsonWriter::value(std::string_view text) {
    beforeValue();
    out_ += quoted(text);
    return *this;
}

JsonWriter& JsonWriter::value(const QString& text) {
    const QByteArray utf8 = text.toUtf8();
    return value(std::string_view(utf8.constData(), static_cast<std::size_t>(utf8.size())));
}

JsonWriter& JsonWriter::colour(const QColor& colour) {
    return value(colour.name(QColor::HexRgb).toLower());
}

JsonWriter& JsonWriter::null() {
    beforeValue();
    out_ += "null";
    return *this;
}

}  // namespace sonalyx::chart
