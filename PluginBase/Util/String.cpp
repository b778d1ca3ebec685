#include "PluginBase/Util/String.h"

#include <algorithm>
#include <charconv>
#include <cstring>
#include <limits>
#include <string_view>
#include <utility>

namespace {

constexpr uint32_t kDefaultRadix = 10, kLargestRadix = 36;
constexpr uint32_t kDefaultPrecision = 6, kLargestPrecision = 99;
constexpr size_t kLongestReal = 1023;
constexpr char kNoBreakSpace = static_cast<char>(160);

// Replacements for the C library's functions, which depend on the locale that the host has set.
bool isSpace(char c) { return c == ' ' || (c >= 9 && c <= 13) || c == kNoBreakSpace; }
bool isDigit(char c) { return c >= '0' && c <= '9'; }
char lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }
bool isHexDigit(char c) { return isDigit(c) || (lower(c) >= 'a' && lower(c) <= 'f'); }
char upper(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }

bool equal(char a, char b, bool caseSensitive) { return caseSensitive ? a == b : lower(a) == lower(b); }

template <class Integer>
String digits(Integer value, uint32_t radix)
{
    if (radix < 2 || radix > kLargestRadix) radix = kDefaultRadix;
    char room[std::numeric_limits<Integer>::digits + 2]; // radix 2 and a sign
    char *const end = std::to_chars(std::begin(room), std::end(room), value, static_cast<int>(radix)).ptr;
    std::string text(room, end);
    std::transform(text.begin(), text.end(), text.begin(), upper);
    return String(std::move(text));
}

struct Reading {
    double value;
    size_t consumed;
};

/// Infinity or zero for a well-formed number outside the range of double. `text` has no sign. Such a number
/// is hundreds of digits away from 1, so the first digit's position plus the exponent is precise enough.
double beyondRange(std::string_view text, bool hexadecimal)
{
    const size_t mantissaEnd = std::min(text.find_first_of(hexadecimal ? "pP" : "eE"), text.size());
    const std::string_view mantissa = text.substr(0, mantissaEnd);
    const size_t point = std::min(mantissa.find('.'), mantissa.size());
    const size_t first = std::min(mantissa.find_first_not_of("0."), mantissa.size());
    const double place = static_cast<double>(point) - static_cast<double>(first);
    double exponent = 0;
    bool negative = false;
    for (const char c : text.substr(mantissaEnd)) {
        if (isDigit(c)) exponent = exponent * 10 + (c - '0');
        if (c == '-') negative = true;
    }
    const double magnitude = place * (hexadecimal ? 4 : 1) + (negative ? -exponent : exponent);
    return magnitude > 0 ? std::numeric_limits<double>::infinity() : 0.0;
}

/// As strtod in the "C" locale.
Reading readReal(std::string_view text)
{
    const bool negative = text.starts_with('-');
    const size_t sign = negative || text.starts_with('+') ? 1 : 0;
    std::string_view body = text.substr(sign);
    size_t prefix = 0;
    if (body.size() > 2 && body[0] == '0' && lower(body[1]) == 'x' && (isHexDigit(body[2]) || body[2] == '.'))
        prefix = 2;
    body.remove_prefix(prefix);
    // from_chars would accept a second sign, before the number or before a hexadecimal exponent.
    if (body.starts_with('-')) return {0, 0};
    if (prefix != 0) body = body.substr(0, body.find("+-"));
    const auto format = prefix != 0 ? std::chars_format::hex : std::chars_format::general;
    double value = 0;
    const char *bodyEnd = body.data() + body.size();
    const auto [end, error] = std::from_chars(body.data(), bodyEnd, value, format);
    if (error == std::errc::invalid_argument) return {0, 0};
    const auto length = static_cast<size_t>(end - body.data());
    if (error == std::errc::result_out_of_range) value = beyondRange(body.substr(0, length), prefix != 0);
    return {negative ? -value : value, sign + prefix + length};
}

/// Position of the marker that `arg` replaces next, or npos.
size_t lowestMarker(const std::string &text)
{
    size_t best = std::string::npos;
    for (size_t i = 0; i + 1 < text.size(); ++i) {
        if (text[i] != '%' || !isDigit(text[i + 1])) continue;
        if (best == std::string::npos || text[i + 1] < text[best + 1]) best = i;
    }
    return best;
}

} // namespace

String::String(const char *characters)
    : text(characters ? std::make_shared<const std::string>(characters) : nullptr)
{
}

String::String(const char *characters, uint32_t maxLength)
    : text(characters ? std::make_shared<const std::string>(characters, strnlen(characters, maxLength))
                      : nullptr)
{
}

String::String(std::string characters) : text(std::make_shared<const std::string>(std::move(characters))) {}

void String::setText(Buffer buffer) { text = std::move(buffer); }

String String::left(uint32_t count) const
{
    return count >= length() ? *this : String(text->substr(0, count));
}

String String::right(uint32_t count) const
{
    return count >= length() ? *this : String(text->substr(length() - count));
}

String String::mid(uint32_t position, OptionalIndex count) const
{
    if (position >= length()) return "";
    const uint32_t rest = length() - position;
    const uint32_t wanted = std::min(count.valueOr(rest), rest);
    return wanted == length() ? *this : String(text->substr(position, wanted));
}

String operator+(const String &a, const String &b)
{
    String sum = a;
    return sum += b;
}

String &String::operator+=(const String &other)
{
    if (other.isEmpty()) return *this;
    if (isEmpty())
        text = other.text;
    else
        text = std::make_shared<const std::string>(*text + *other.text);
    return *this;
}

void String::truncate(uint32_t count) { *this = left(count); }

String String::replace(char from, char to) const
{
    if (bytes().find(from) == std::string::npos) return *this;
    std::string changed = *text;
    std::replace(changed.begin(), changed.end(), from, to);
    return String(std::move(changed));
}

String String::trimmed() const
{
    const std::string &all = bytes();
    const auto first = std::find_if_not(all.begin(), all.end(), isSpace);
    const auto last = std::find_if_not(all.rbegin(), std::make_reverse_iterator(first), isSpace).base();
    if (first == all.begin() && last == all.end()) return *this;
    return String(std::string(first, last));
}

String String::simplified() const
{
    const String inner = trimmed();
    std::string changed;
    for (const char c : inner.bytes()) {
        if (!isSpace(c))
            changed += c;
        else if (!changed.ends_with(' '))
            changed += ' ';
    }
    return changed == inner.bytes() ? inner : String(std::move(changed));
}

OptionalIndex String::find(char wanted, uint32_t from, bool caseSensitive) const
{
    for (uint32_t i = from; i < length(); ++i)
        if (equal((*text)[i], wanted, caseSensitive)) return i;
    return {};
}

OptionalIndex String::findLast(char wanted, OptionalIndex from, bool caseSensitive) const
{
    if (isEmpty() || (from.found && from.value >= length())) return {};
    for (uint32_t end = from.valueOr(length() - 1) + 1; end > 0; --end)
        if (equal((*text)[end - 1], wanted, caseSensitive)) return end - 1;
    return {};
}

String String::number(uint32_t value, uint32_t radix) { return digits(value, radix); }

String String::number(int32_t value, uint32_t radix) { return digits(value, radix); }

// std::to_chars gives printf's result in the "C" locale on every system. C libraries differ in the sign of
// NaN, the digits of the exponent and the locale's decimal mark.
String String::realNumber(double value, OptionalIndex precision, char format)
{
    const auto style = lower(format) == 'e'   ? std::chars_format::scientific
                       : lower(format) == 'g' ? std::chars_format::general
                                              : std::chars_format::fixed;
    const uint32_t places = std::min(precision.valueOr(kDefaultPrecision), kLargestPrecision);
    char room[kLongestReal];
    char *const end =
        std::to_chars(std::begin(room), std::end(room), value, style, static_cast<int>(places)).ptr;
    std::string written(room, end);
    const bool capitals = format == 'F' || format == 'E' || format == 'G';
    if (capitals) std::transform(written.begin(), written.end(), written.begin(), upper);
    return String(std::move(written));
}

double String::toDouble(bool *ok) const
{
    if (ok) *ok = false;
    if (isEmpty()) return 0.0;
    const String pointed = trimmed().replace(',', '.');
    const Reading read = readReal(pointed.bytes());
    // Compared with the untrimmed length on purpose: a number with leading or trailing spaces is refused.
    if (read.consumed != length()) return 0.0;
    if (ok) *ok = true;
    return read.value;
}

String String::arg(const String &value) const
{
    if (isEmpty()) return value;
    const size_t marker = lowestMarker(*text);
    if (marker == std::string::npos) return *this + value;
    return String(std::string(*text).replace(marker, 2, value.bytes()));
}

String String::arg(int32_t value, uint32_t radix) const
{
    return arg(radix == 16 ? number(static_cast<uint32_t>(value), radix) : number(value, radix));
}

const std::string &String::bytes() const
{
    static const std::string empty;
    return text ? *text : empty;
}

String fitToLength(const String &text, uint32_t maxLength, char separator)
{
    String first, longest;
    bool split = false;
    for (uint32_t start = 0; start <= text.length();) {
        const OptionalIndex end = text.find(separator, start);
        const String piece = text.mid(start, end.valueOr(text.length()) - start);
        if (!std::exchange(split, true)) first = piece;
        const bool fits = maxLength == 0 || piece.length() <= maxLength;
        if (fits && piece.length() > longest.length()) longest = piece;
        start = end.valueOr(text.length()) + 1;
    }
    return longest.isEmpty() ? first.left(maxLength) : longest;
}
