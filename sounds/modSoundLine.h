#pragma once
// What the wav list sends: the sound's line, and the line about it that follows.
#include "base/random.h"
#include "sounds/WavDescriptions.h"
#include "sounds/modSoundCommand.h"

#include <utility>

namespace velora {

/// A style out of those that may come by chance; empty when there is none. The generator starts
/// anew from the clock.
std::wstring randomGlintune(const std::vector<std::wstring>& styles, RandomSource& random);

/// One field by its name in the options ("Title", ... "Compression"); empty for an unknown one.
std::wstring descriptionField(const WavDescription& description, std::wstring_view field);

/// The names of all fields, in their order.
const std::vector<std::wstring>& descriptionFields();

/// The fields that are told and not blank, as label ("Title:") and value.
std::vector<std::pair<std::wstring, std::wstring>>
describedFields(const WavDescription& description, const std::vector<std::wstring>& fields);

/// The same as plain text, one field a line.
std::wstring descriptionTip(const WavDescription& description,
                            const std::vector<std::wstring>& fields);
/// The same for a message box, as markup: each label bold and blue.
std::wstring descriptionMarkup(const WavDescription& description,
                               const std::vector<std::wstring>& fields);

/// The description in one line: the fields of these names (the second may be empty) with " - "
/// between them; line breaks in them become blanks.
std::wstring descriptionText(const WavDescription& description, std::wstring_view field1,
                             std::wstring_view field2);

/// The line that follows a sound: empty when the text is blank.
std::wstring descriptionLine(std::wstring_view text, bool trimDescrip);

/// Whether a sound goes into the window in front of AOL instead of the room: an instant message, a
/// reply or a forwarded mail, by its caption.
bool takesSounds(std::wstring_view caption);

} // namespace velora
