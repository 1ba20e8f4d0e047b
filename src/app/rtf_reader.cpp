#include "app/rtf_reader.h"

#include "views/window/memo_codec.h"

namespace {

bool isLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}
bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

// Destinations whose text is not shown.
bool isSkippedDestination(const QByteArray& word) {
    static const QByteArrayList skipped = {"fonttbl",   "stylesheet",       "info",   "pict",
                                           "header",    "footer",           "object", "generator",
                                           "listtable", "listoverridetable"};
    return skipped.contains(word);
}

}  // namespace

std::optional<QString> RtfReader::toHtml(const QByteArray& rtf) {
    if (!rtf.trimmed().startsWith("{\\rtf")) {
        return std::nullopt;
    }
    RtfReader reader(rtf);
    return reader.Run();
}

QString RtfReader::Run() {
    while (pos_ < rtf_.size()) {
        const char c = rtf_.at(pos_);
        if (c == '{') {
            ++pos_;
            FlushRun();
            stack_.append(current_);
        } else if (c == '}') {
            ++pos_;
            FlushRun();
            if (!stack_.isEmpty()) {
                current_ = stack_.takeLast();
            }
        } else if (c == '\\') {
            ReadControl();
        } else {
            ++pos_;
            if (c != '\r' && c != '\n') {
                AppendText(QString(QLatin1Char(c)));
            }
        }
    }
    EndParagraph();
    return html_;
}

void RtfReader::ReadControl() {
    ++pos_;  // the backslash
    if (pos_ >= rtf_.size()) {
        return;
    }
    const char c = rtf_.at(pos_);
    if (!isLetter(c)) {
        ++pos_;
        switch (c) {
            case '\\':
            case '{':
            case '}':
                AppendText(QString(QLatin1Char(c)));
                break;
            case '~':
                AppendText(QString(QChar(0x00A0)));
                break;
            case '\'': {
                const QByteArray hex = rtf_.mid(pos_, 2);
                pos_ += hex.size();
                bool ok = false;
                const int byte = hex.toInt(&ok, 16);
                if (ok) {
                    AppendText(
                        sonalyx::MemoCodec::decodeLine(std::string(1, static_cast<char>(byte))));
                }
                break;
            }
            case '*':
                ignorableNext_ = true;
                break;
            case '\n':
            case '\r':
                EndParagraph();
                break;
            default:
                break;  // \- and other symbols without a visible form
        }
        return;
    }
    QByteArray word;
    while (pos_ < rtf_.size() && isLetter(rtf_.at(pos_))) {
        word.append(rtf_.at(pos_++));
    }
    std::optional<int> parameter;
    const qsizetype start = pos_;
    if (pos_ < rtf_.size() && (rtf_.at(pos_) == '-' || isDigit(rtf_.at(pos_)))) {
        ++pos_;
        while (pos_ < rtf_.size() && isDigit(rtf_.at(pos_))) {
            ++pos_;
        }
        parameter = rtf_.mid(start, pos_ - start).toInt();
    }
    if (pos_ < rtf_.size() && rtf_.at(pos_) == ' ') {
        ++pos_;  // the delimiter belongs to the control word
    }
    ApplyControlWord(word, parameter);
}

void RtfReader::ApplyControlWord(const QByteArray& word, std::optional<int> parameter) {
    const bool on = !parameter || *parameter != 0;
    if (ignorableNext_) {
        ignorableNext_ = false;
        current_.skip = true;
        return;
    }
    if (isSkippedDestination(word)) {
        current_.skip = true;
    } else if (word == "colortbl") {
        current_.colourTable = true;
    } else if (current_.colourTable && (word == "red" || word == "green" || word == "blue")) {
        (word == "red" ? red_ : word == "green" ? green_ : blue_) = parameter.value_or(0);
    } else if (word == "par") {
        EndParagraph();
    } else if (word == "line") {
        AppendText(QStringLiteral("\n"));
    } else if (word == "tab") {
        AppendText(QStringLiteral("\t"));
    } else if (word == "b" || word == "i" || word == "ul" || word == "ulnone" || word == "cf" ||
               word == "fs" || word == "plain") {
        FlushRun();
        if (word == "b") {
            current_.bold = on;
        } else if (word == "i") {
            current_.italic = on;
        } else if (word == "ul") {
            current_.underline = on;
        } else if (word == "ulnone") {
            current_.underline = false;
        } else if (word == "cf") {
            current_.colour = parameter.value_or(0);
        } else if (word == "fs") {
            current_.halfPoints = parameter.value_or(0);
        } else {
            const bool skip = current_.skip;
            current_ = Format{};
            current_.skip = skip;
        }
    } else if (word == "u" && parameter) {
        const int code = *parameter < 0 ? *parameter + 65536 : *parameter;
        AppendText(QString(QChar(static_cast<char16_t>(code))));
        skipAfterUnicode_ = 1;
    } else if (word == "emdash") {
        AppendText(QString(QChar(0x2014)));
    } else if (word == "endash") {
        AppendText(QString(QChar(0x2013)));
    } else if (word == "bullet") {
        AppendText(QString(QChar(0x2022)));
    } else if (word == "lquote" || word == "rquote") {
        AppendText(QString(QChar(word == "lquote" ? 0x2018 : 0x2019)));
    } else if (word == "ldblquote" || word == "rdblquote") {
        AppendText(QString(QChar(word == "ldblquote" ? 0x201C : 0x201D)));
    }
}

void RtfReader::AppendText(const QString& text) {
    if (current_.colourTable) {
        // Entries end with ';' in the colour table; the first, empty one is the default.
        if (text == QStringLiteral(";") && colours_.size() < 256) {
            colours_.append(QColor(red_, green_, blue_));
            red_ = green_ = blue_ = 0;
        }
        return;
    }
    if (current_.skip) {
        return;
    }
    if (skipAfterUnicode_ > 0) {
        --skipAfterUnicode_;
        return;
    }
    run_ += text;
}

QString RtfReader::OpenSpan(const Format& format) const {
    QStringList style;
    if (format.bold) {
        style << QStringLiteral("font-weight:bold");
    }
    if (format.italic) {
        style << QStringLiteral("font-style:italic");
    }
    if (format.underline) {
        style << QStringLiteral("text-decoration:underline");
    }
    if (format.colour > 0 && format.colour < colours_.size()) {
        style << QStringLiteral("color:%1").arg(colours_.at(format.colour).name());
    }
    if (format.halfPoints > 0) {
        style << QStringLiteral("font-size:%1pt").arg(format.halfPoints / 2.0);
    }
    return QStringLiteral("<span style=\"%1\">").arg(style.join(QLatin1Char(';')));
}

void RtfReader::FlushRun() {
    if (run_.isEmpty()) {
        return;
    }
    QString escaped = run_.toHtmlEscaped();
    escaped.replace(QLatin1Char('\n'), QStringLiteral("<br/>"));
    escaped.replace(QLatin1Char('\t'), QStringLiteral("&nbsp;&nbsp;&nbsp;&nbsp;"));
    paragraph_ += OpenSpan(current_) + escaped + QStringLiteral("</span>");
    run_.clear();
}

void RtfReader::EndParagraph() {
    FlushRun();
    html_ += QStringLiteral("<p>") + paragraph_ + QStringLiteral("</p>\n");
    paragraph_.clear();
}
