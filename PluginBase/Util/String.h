#pragma once
#include <compare>
#include <concepts>
#include <cstdint>
#include <memory>
#include <string>

#include "PluginBase/Util/OptionalIndex.h"

/// A string of 8-bit characters in the system's code page. Copies share one immutable buffer; changing a
/// string gives it a new buffer and leaves the copies unchanged. A default-constructed string is null: it has
/// no buffer and reads and compares as "".
/// Thread  one at a time; construction and changes allocate, so audio code must not use strings
/// Errors  positions out of range give empty strings and zeros; out of memory: std::bad_alloc
class String {
public:
    using Buffer = std::shared_ptr<const std::string>;

    String() = default;
    String(const char *characters);
    /// Copies at most `maxLength` characters and stops at a zero.
    String(const char *characters, uint32_t maxLength);
    explicit String(std::string characters);
    /// A string of one character. Accepts only `char`, so that numbers do not convert implicitly.
    template <std::same_as<char> Character>
    String(Character character) : String(std::string(1, character))
    {
    }

    /// Replaces the buffer, which must not change afterwards; null makes the string null.
    void setText(Buffer buffer);

    bool isNull() const { return !text; }
    bool isEmpty() const { return length() == 0; }
    uint32_t length() const { return text ? static_cast<uint32_t>(text->size()) : 0; }
    /// Never null.
    const char *c_str() const { return text ? text->c_str() : ""; }
    /// Returns 0 beyond the end.
    char at(uint32_t position) const { return position < length() ? (*text)[position] : '\0'; }
    bool sharesTextWith(const String &other) const { return text == other.text; }

    /// Compares unsigned bytes. A null pointer is less than every string and equal to none.
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
    /// Returns `count` characters from `position`; default: up to the end.
    String mid(uint32_t position, OptionalIndex count = {}) const;
    friend String operator+(const String &a, const String &b);
    String &operator+=(const String &other);
    void truncate(uint32_t count);
    String replace(char from, char to) const;
    /// Removes whitespace at both ends: space, characters 9 to 13, and the no-break space 160.
    String trimmed() const;
    /// Trims, and replaces each inner run of whitespace with one space.
    String simplified() const;

    /// First position at or after `from`. Case folding covers 'A' to 'Z' only.
    OptionalIndex find(char wanted, uint32_t from = 0, bool caseSensitive = true) const;
    /// Last position at or before `from`; default: in the whole string.
    OptionalIndex findLast(char wanted, OptionalIndex from = {}, bool caseSensitive = true) const;

    /// Uses the digits 0 to 9 and A to Z. A radix outside 2 to 36 counts as 10.
    static String number(uint32_t value, uint32_t radix = 10);
    static String number(int32_t value, uint32_t radix = 10);
    /// Formats as printf's %f, %e, %g and their capital forms do in the "C" locale, whatever locale the host
    /// uses. Precision is at most 99 (default: 6). An unknown format letter counts as 'f'.
    template <std::floating_point Real>
    static String number(Real value, OptionalIndex precision = {}, char format = 'f')
    {
        return realNumber(value, precision, format);
    }
    /// As above; a negative precision selects the default.
    template <std::floating_point Real>
    static String number(Real value, int32_t precision, char format = 'f')
    {
        return realNumber(value, precision < 0 ? OptionalIndex() : static_cast<uint32_t>(precision), format);
    }

    /// Parses the whole string as strtod does in the "C" locale: decimal with '.' or ',', hexadecimal, infinity
    /// or NaN. Returns 0 on failure and for a space at either end. Sets `ok` (may be null) to true on success.
    double toDouble(bool *ok = nullptr) const;

    /// Replaces the lowest-numbered marker ("%0" to "%9") with the value; of equal ones, the first. Appends
    /// the value if there is no marker. Calls can be chained; the next call also replaces markers inside the
    /// value.
    String arg(const String &value) const;
    String arg(const char *value) const { return arg(String(value)); }
    String arg(uint32_t value, uint32_t radix = 10) const { return arg(number(value, radix)); }
    /// Radix 16 formats the value as unsigned: -1 gives "FFFFFFFF".
    String arg(int32_t value, uint32_t radix = 10) const;
    template <std::floating_point Real>
    String arg(Real value, int32_t precision = -1, char format = 'f') const
    {
        return arg(number(value, precision, format));
    }

private:
    static String realNumber(double value, OptionalIndex precision, char format);
    /// The contents; empty if the string is null.
    const std::string &bytes() const;

    Buffer text;
};

/// Splits `text` at `separator` into alternatives, such as a long and a short name. Returns the longest one
/// of at most `maxLength` characters (0: no limit); of equally long ones, the first. If none fits, returns
/// the first one cut to `maxLength`.
String fitToLength(const String &text, uint32_t maxLength, char separator);
