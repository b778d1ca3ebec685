#pragma once
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace App {

/// The metadata of an input that an output does not contain, by chunk or tag name.
class MetadataLoss {
public:
    enum class Reason { noPlace, notRead, excerpt, damaged, tooLarge };

    void add(Reason reason, std::string_view name);
    void add(const MetadataLoss &other);
    /// One sentence per reason, normally one in all. `in` and `out` are the extensions of the files: ".wav".
    std::vector<std::string> remarks(const std::string &in, const std::string &out) const;

private:
    std::map<Reason, std::vector<std::string>> names;
};

} // namespace App
