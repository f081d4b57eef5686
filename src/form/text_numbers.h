#pragma once

#include "form/text_list.h"

// The numbers of the texts, kTextStart or kMoreConfirm, and how many each table has.
namespace pavoline {

#define PAVOLINE_NUMBER(name, key) kOption##name,
enum LanguageOption { PAVOLINE_LANGUAGE_OPTIONS(PAVOLINE_NUMBER) kOptionCount };
#undef PAVOLINE_NUMBER

#define PAVOLINE_NUMBER(name) kText##name,
enum TextNumber { PAVOLINE_STRINGS(PAVOLINE_NUMBER) kStringCount };
#undef PAVOLINE_NUMBER

#define PAVOLINE_NUMBER(name) kCaption##name,
enum CaptionNumber { PAVOLINE_CAPTIONS(PAVOLINE_NUMBER) kCaptionCount };
#undef PAVOLINE_NUMBER

#define PAVOLINE_NUMBER(name) kMore##name,
enum MoreNumber { PAVOLINE_MORE(PAVOLINE_NUMBER) kMoreCount };
#undef PAVOLINE_NUMBER

}  // namespace pavoline
