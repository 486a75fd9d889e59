#pragma once

namespace velora {

/// Writes the mail and board reply templates that come with the program into "Templates\1" to
/// "Templates\3"; what the user has there stays. Throws Error when the settings refuse.
void MakeDefaultTemplates();

} // namespace velora
