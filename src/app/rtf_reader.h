#pragma once

#include <QByteArray>
#include <QColor>
#include <QString>
#include <QVector>
#include <optional>

// Reads the small part of RTF the glossary is written in and turns it into HTML for a text
// browser: groups, paragraphs and line breaks, bold, italic, underline, font size, colours
// from the colour table, \'hh (Windows-1252) and \uN escapes, and the usual typographic
// symbols. Font tables, style sheets, document info and \* destinations are skipped.
class RtfReader {
  public:
    // nullopt when the bytes are not RTF at all.
    static std::optional<QString> toHtml(const QByteArray& rtf);

  private:
    struct Format {
        bool bold = false;
        bool italic = false;
        bool underline = false;
        int colour = 0;      // index into the colour table; 0 is the default colour
        int halfPoints = 0;  // 0 keeps the browser's size
        bool skip = false;   // inside a destination that carries no text
        bool colourTable = false;
    };

    explicit RtfReader(const QByteArray& rtf) : rtf_(rtf) {}
    QString Run();
    void ReadControl();
    void ApplyControlWord(const QByteArray& word, std::optional<int> parameter);
    void AppendText(const QString& text);
    void FlushRun();
    void EndParagraph();
    QString OpenSpan(const Format& format) const;

    const QByteArray& rtf_;
    qsizetype pos_ = 0;
    QVector<Format> stack_;
    Format current_;
    QVector<QColor> colours_;  // entry 0 is the "auto" colour
    int red_ = 0;
    int green_ = 0;
    int blue_ = 0;
    int skipAfterUnicode_ = 0;
    QString run_;
    QString paragraph_;
    QString html_;
    bool ignorableNext_ = false;
};
