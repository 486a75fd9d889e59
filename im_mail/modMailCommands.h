#pragma once
// Encrypting the mail that is being written, step by step, over an interface to AOL's mail window.
// Whatever fails on the way, the mail stays or becomes again what it was.
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace velora {

struct TextRange {
    int from = 0, to = 0; ///< positions of the text box; a paragraph's end counts as one
};

/// The body of a mail that is being written. Texts have CR LF line ends. Each call may fail: absent
/// or false, and nothing has changed then.
class MailBody {
public:
    virtual ~MailBody() = default;
    virtual std::optional<std::wstring> text() = 0;
    virtual std::optional<TextRange> selection() = 0;
    virtual std::optional<std::wstring> selectedText() = 0;
    virtual bool select(TextRange range) = 0;
    virtual bool selectAll() = 0;
    /// Undoable.
    virtual bool replaceSelection(std::wstring_view text) = 0;
    /// Takes back the last change.
    virtual bool undo() = 0;
};

/// What is asked on the way; both may pump messages.
struct EncryptQuestions {
    /// Nothing is selected: the whole mail?
    std::function<bool()> wholeMail;
    /// Empty when cancelled.
    std::function<std::wstring()> password;
};

enum class EncryptResult {
    done,
    cancelled, ///< or there is no text to encrypt
    tooLong,   ///< the envelope would not fit a mail
    changed,   ///< the mail is not what it was when the password was asked for
    failed,    ///< AOL did not take it
};

/// A mail before and after its encryption. The plain text is kept for the way back only.
struct EncryptedMail {
    std::wstring before, after;
    EncryptedMail() = default;
    ~EncryptedMail();
    EncryptedMail(const EncryptedMail&) = delete;
    EncryptedMail& operator=(const EncryptedMail&) = delete;
};

/// Replaces the selection (or the whole body) by its envelope, with the notice at the top when
/// `notice` and it is not there yet. `undo` is filled when done.
EncryptResult encryptMail(MailBody& body, const EncryptQuestions& questions, bool notice,
                          EncryptedMail& undo);

/// The mail as it was before; false, and nothing changed, when it has been changed since.
bool undoEncryption(MailBody& body, const EncryptedMail& encrypted);

/// Replaces the selection by what `change` makes of it. `tooLong` when the body would reach what a
/// mail holds, `cancelled` when nothing is selected.
EncryptResult replaceSelected(MailBody& body,
                              const std::function<std::wstring(std::wstring)>& change);

} // namespace velora
