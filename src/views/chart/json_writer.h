#pragma once

#include <QColor>
#include <QString>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

namespace sonalyx::chart {

// A streaming JSON writer whose objects keep their keys in the order written. Containers are
// laid out one element per line, or on one line when opened inline (short arrays of numbers).
// Numbers are the shortest text that reads back to the same double; strings are UTF-8.
class JsonWriter {
  public:
    enum class Layout { Block, Inline };

    JsonWriter& beginObject(Layout layout = Layout::Block);
    JsonWriter& endObject();
    JsonWriter& beginArray(Layout layout = Layout::Block);
    JsonWriter& endArray();
    JsonWriter& key(std::string_view name);

    JsonWriter& value(double number);
    // Any integer type (int, qsizetype, std::size_t...) without ambiguity.
    template <typename Integer>
    requires(std::is_integral_v<Integer> &&
             !std::is_same_v<Integer, bool>) JsonWriter& value(Integer number) {
        return integer(static_cast<long long>(number));
    }
    JsonWriter& value(bool flag);
    JsonWriter& value(const char* text) { return value(std::string_view(text)); }
    JsonWriter& value(std::string_view text);
    JsonWriter& value(const QString& text);
    JsonWriter& colour(const QColor& colour);  // "#rrggbb", lower case
    JsonWriter& null();

    // The text so far; complete once every container is closed. Ends with a newline then.
    const std::string& text() const { return out_; }

    static std::string quoted(std::string_view utf8);
    static std::string number(double value);

  private:
    JsonWriter& integer(long long number);

    struct Level {
        Layout layout;
        bool empty = true;
    };
    void beforeValue();
    void open(char bracket, Layout layout);
    void close(char bracket);
    void newline();

    std::string out_;
    std::vector<Level> levels_;
    bool afterKey_ = false;
};

}  // namespace sonalyx::chart
