#pragma once
#include <compare>
#include <concepts>
#include <cstdint>
#include <memory>
#include <string>

#include "PluginBase/Util/OptionalIndex.h"

/// The text type of the system: 8-bit characters of the system's code page, one byte each. Copies share one
/// buffer that is never written again; whoever changes a text installs a new buffer, and the others keep
/// theirs. A text that was never given is null: it has no buffer, and reads and compares as "".
/// Thread  one at a time; making and changing allocate, so no audio code builds texts
/// Errors  positions out of range give empty texts and zeros; no memory: std::bad_alloc
class String {
public:
    using Buffer = std::shared_ptr<const std::string>;

    String() = default;
    String(const char *characters);
    /// At most `maxLength` characters, fewer if a zero comes before.
    String(const char *characters, uint32_t maxLength);
    explicit String(std::string characters);
    /// One character. Takes `char` alone, so that no number turns into a character unnoticed.
    template <std::same_as<char> Character>
    String(Character character) : String(std::string(1, character))
    {
    }

    /// Installs a buffer, which nobody may change afterwards; null makes the text null.
    void setText(Buffer buffer);

    bool isNull() const { return !text; }
    bool isEmpty() const { return length() == 0; }
    uint32_t length() const { return text ? static_cast<uint32_t>(text->size()) : 0; }
    /// Never null.
    const char *c_str() const { return text ? text->c_str() : ""; }
    /// The character, or 0 beyond the end.
    char at(uint32_t position) const { return position < length() ? (*text)[position] : '\0'; }
    bool sharesTextWith(const String &other) const { return text == other.text; }

    /// Byte by byte, unsigned. A null pointer is below every text and equal to none.
    friend bool operator==(const String &a, const String &b) { return a.bytes() == b.bytes(); }
    friend std::strong_ordering operator<=>(const String &a, const String &b)
    {
        return a.bytes() <=> b.bytes();
    }
    friend bool operator==(const String &a, const char *b) { return b && a.bytes() == b; }
    friend std::strong_ordering operator<=>(const String &a, const char *b)
    {
        return b ? a.bytes() <=> b : std::strong_ordering::greater;
    }

    String left(uint32_t count) const;
    String right(uint32_t count) const;
    /// `count` characters from `position`, or all to the end.
    String mid(uint32_t position, OptionalIndex count = {}) const;
    friend String operator+(const String &a, const String &b);
    String &operator+=(const String &other);
    void truncate(uint32_t count);
    String replace(char from, char to) const;
    /// Without whitespace at both ends: blank, 9 to 13, and the no-break space 160.
    String trimmed() const;
    /// Trimmed, and each inner run of whitespace made one blank.
    String simplified() const;

    /// First position at or after `from`. Case folding knows 'A' to 'Z' only.
    OptionalIndex find(char wanted, uint32_t from = 0, bool caseSensitive = true) const;
    /// Last position at or before `from`, or of the whole text.
    OptionalIndex findLast(char wanted, OptionalIndex from = {}, bool caseSensitive = true) const;

    /// Digits 0 to 9, A to Z; a radix outside 2 to 36 counts as 10.
    static String number(uint32_t value, uint32_t radix = 10);
    static String number(int32_t value, uint32_t radix = 10);
    /// What printf writes for %f, %e, %g and their capital forms in the "C" locale, whatever the host has
    /// set. Without a precision six digits; above 99 counts as 99; another format letter counts as 'f'.
    template <std::floating_point Real>
    static String number(Real value, OptionalIndex precision = {}, char format = 'f')
    {
        return realNumber(value, precision, format);
    }
    /// The same with -1 (or any negative) for no precision.
    template <std::floating_point Real>
    static String number(Real value, int32_t precision, char format = 'f')
    {
        return realNumber(value, precision < 0 ? OptionalIndex() : static_cast<uint32_t>(precision), format);
    }

    /// The text as a number, with '.' or ',' for the decimal mark; also hexadecimal, infinity and
    /// not-a-number, as strtod reads them in the "C" locale. Sets `ok` (may be null) only if the whole text
    /// is a number, where a blank at either end already spoils it; otherwise the result is 0.
    double toDouble(bool *ok = nullptr) const;

    /// Replaces the marker with the lowest digit ("%0" to "%9"), of equals the first; without a marker the
    /// value is appended, and an empty text becomes the value. Calls chain, and a value is searched by the
    /// next call too.
    String arg(const String &value) const;
    String arg(const char *value) const { return arg(String(value)); }
    String arg(uint32_t value, uint32_t radix = 10) const { return arg(number(value, radix)); }
    /// In radix 16 as unsigned, so that -1 gives "FFFFFFFF".
    String arg(int32_t value, uint32_t radix = 10) const;
    template <std::floating_point Real>
    String arg(Real value, int32_t precision = -1, char format = 'f') const
    {
        return arg(number(value, precision, format));
    }

private:
    static String realNumber(double value, OptionalIndex precision, char format);
    /// Contents for comparing and searching, also of a null text.
    const std::string &bytes() const;

    Buffer text;
};

/// Picks from alternatives, such as a long and a short form of a name: the longest piece of at most
/// `maxLength` characters (0: any length), of equals the first. If none fits, the first piece cut to
/// `maxLength`.
String fitToLength(const String &text, uint32_t maxLength, char separator);
