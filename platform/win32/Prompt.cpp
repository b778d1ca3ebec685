#include <algorithm>

#include "platform/win32/ResourceIds.h"
#include "platform/win32/Win32WindowSystem.h"

namespace Platform {

namespace {

constexpr int kMaxPromptText = 100000; // characters

/// One prompt, from DialogBoxParam to EndDialog.
struct Prompt {
    const PromptRequest &request;
    std::string text;
    bool accepted = false, rejected = false;

    static INT_PTR CALLBACK procedure(HWND dialog, UINT message, WPARAM word, LPARAM number);
    void begin(HWND dialog);
    void accept(HWND dialog);
    void reject(HWND dialog);
    void filter(HWND field) const;
};

std::string fieldText(HWND field)
{
    std::string text(static_cast<size_t>(std::clamp(GetWindowTextLengthA(field), 0, kMaxPromptText)) + 1,
                     '\0');
    text.resize(static_cast<size_t>(GetWindowTextA(field, text.data(), static_cast<int>(text.size()))));
    return text;
}

INT_PTR CALLBACK Prompt::procedure(HWND dialog, UINT message, WPARAM word, LPARAM number)
{
    if (message == WM_INITDIALOG) {
        SetWindowLongPtrA(dialog, DWLP_USER, number);
        reinterpret_cast<Prompt *>(number)->begin(dialog);
        return FALSE; // the focus has been set
    }
    auto *prompt = reinterpret_cast<Prompt *>(GetWindowLongPtrA(dialog, DWLP_USER));
    if (!prompt) return FALSE;
    if (message == WM_ACTIVATE && LOWORD(word) == WA_INACTIVE) {
        prompt->reject(dialog);
        return TRUE;
    }
    if (message != WM_COMMAND) return FALSE;
    if (LOWORD(word) == IDOK)
        prompt->accept(dialog);
    else if (LOWORD(word) == IDCANCEL)
        prompt->reject(dialog);
    else if (LOWORD(word) == kPromptFieldId && HIWORD(word) == EN_UPDATE)
        prompt->filter(reinterpret_cast<HWND>(number));
    else
        return FALSE;
    return TRUE;
}

void Prompt::begin(HWND dialog)
{
    const HWND field = GetDlgItem(dialog, kPromptFieldId);
    RECT frame, inside, place;
    GetWindowRect(field, &place);
    GetWindowRect(dialog, &frame);
    GetClientRect(dialog, &inside);
    const int border = frame.right - frame.left - inside.right;
    const int height = frame.bottom - frame.top;
    int width = frame.right - frame.left;
    if (request.width) {
        width = *request.width + border;
        SetWindowPos(field, nullptr, 0, 0, *request.width, place.bottom - place.top,
                     SWP_NOMOVE | SWP_NOZORDER);
    }
    SetWindowPos(dialog, nullptr, request.centre.x - width / 2, request.centre.y - height / 2, width, height,
                 SWP_NOZORDER);
    SetWindowTextA(field, text.c_str());
    SendMessageA(field, EM_SETSEL, 0, -1);
    SetFocus(field);
}

void Prompt::accept(HWND dialog)
{
    if (accepted || rejected) return;
    text = fieldText(GetDlgItem(dialog, kPromptFieldId));
    accepted = true;
    EndDialog(dialog, 0);
}

void Prompt::reject(HWND dialog)
{
    if (accepted || rejected) return;
    rejected = true;
    EndDialog(dialog, 1);
}

/// Removes forbidden characters and keeps the selection on the remaining text.
void Prompt::filter(HWND field) const
{
    DWORD from = 0, to = 0;
    SendMessageA(field, EM_GETSEL, reinterpret_cast<WPARAM>(&from), reinterpret_cast<LPARAM>(&to));
    const std::string typed = fieldText(field);
    std::string kept;
    DWORD start = from;
    for (size_t i = 0; i < typed.size(); ++i) {
        if (std::find(request.allowed.begin(), request.allowed.end(), typed[i]) != request.allowed.end())
            kept += typed[i];
        else if (i < from)
            --start;
    }
    if (kept == typed) return;
    SetWindowTextA(field, kept.c_str());
    SendMessageA(field, EM_SETSEL, start, start + (to - from));
}

} // namespace

std::optional<std::string> Win32WindowSystem::promptText(const PromptRequest &request)
{
    Prompt prompt{request, request.text};
    const INT_PTR result = DialogBoxParamA(module(), MAKEINTRESOURCEA(kPromptDialogId), native(request.owner),
                                           &Prompt::procedure, reinterpret_cast<LPARAM>(&prompt));
    if (result != 0 || !prompt.accepted) return std::nullopt;
    return prompt.text;
}

} // namespace Platform
