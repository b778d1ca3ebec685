#pragma once
// Numbers of the module's resources, for C++ and windres.

#define TESSARINE_PROMPT_DIALOG 374
#define TESSARINE_PROMPT_FIELD 1042
#define TESSARINE_DRAG_CURSOR 375

#ifndef RC_INVOKED
constexpr int kPromptDialogId = TESSARINE_PROMPT_DIALOG;
constexpr int kPromptFieldId = TESSARINE_PROMPT_FIELD;
constexpr int kDragCursorId = TESSARINE_DRAG_CURSOR;
#endif
