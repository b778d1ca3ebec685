#include "ui/editor/Language.h"

#include "PluginBase/Util/RegistryKey.h"

namespace UI {

namespace {

constexpr int32_t kFontHeight = -10; // pixels; negative: height of the letters

/// Converts the host's language setting to an Index; English if there is no setting.
Language::Index hostLanguage()
{
    const Util::RegistryKey preferences("SOFTWARE\\Adobe\\Audition\\2.0\\Prefs",
                                        Platform::RegistryRoot::localMachine);
    switch (preferences.readDword("Language", 0)) {
    case 1: return Language::german;
    case 2: return Language::french;
    case 3: return Language::japanese;
    case 4: return Language::spanish;
    case 5: return Language::italian;
    default: return Language::english;
    }
}

std::optional<Language::Index> preferred;

} // namespace

Language::Language() : Language(preferred.value_or(hostLanguage())) {}

void Language::prefer(std::optional<Index> chosen) { preferred = chosen; }

Language::Language(Index chosen) : language(chosen)
{
    if (language == english) return;
    const char *const face = language == japanese ? "MS UI Gothic" : "Arial";
    label = Platform::windowSystem().createFont({kFontHeight, false, face});
    toolTip = Platform::windowSystem().createFont({kFontHeight, false, "Arial"});
}

std::u16string Language::string(uint32_t textIndex) const
{
    if (language == english || textIndex >= kTextRows) return {};
    return Platform::windowSystem().loadString(textRow(textIndex).stringId + kTextRows * language);
}

} // namespace UI
