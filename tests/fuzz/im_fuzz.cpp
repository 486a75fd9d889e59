// Captions to names to paths, ignore lists and answers.
#include "base/safename.h"
#include "base/text.h"
#include "fuzz/fuzz.h"
#include "im_mail/modAnswerRules.h"
#include "im_mail/modIMLog.h"
#include "im_mail/modIMRules.h"
#include "im_mail/modIgnore.h"

#include <algorithm>

using namespace velora;
using fuzz::require;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::wstring text = from1252(fuzz::bytesOf(data, size));
    const std::size_t lineEnd = text.find(L'\n');
    const std::wstring caption = text.substr(0, lineEnd);
    const std::wstring list = lineEnd == text.npos ? std::wstring() : text.substr(lineEnd + 1);

    for (int edition = 0; edition < 6; ++edition)
        isImCaption(caption, edition, 3 + edition % 5);
    const std::wstring name = senderFromCaption(caption);
    const std::wstring path = imLogPath(L"L", name, true, {2001, 2, 3});
    require(std::count(path.begin(), path.end(), L'\\') == 2);
    require(isPlainFileName(path.substr(path.rfind(L'\\') + 1)));
    require(isPlainFileName(personalisedFileName(name)));

    isIgnored(list, name, 100);
    const std::wstring key = screenNameKey(name);
    const bool control = std::any_of(name.begin(), name.end(),
                                     [](wchar_t c) { return static_cast<unsigned>(c) < 32; });
    if (!key.empty() && !control) {
        const std::wstring added = withIgnored(list, name, 100);
        require(isIgnored(added, name, 100));
        require(!isListed(withoutIgnored(added, name), name));
    }
    const AnswerChoice answer = GetReturnMsg(std::nullopt, list, L"");
    require(answer.text.size() <= kMostImCharacters && !answer.text.empty());
    fillAnswer(answer.text, name);
    logNoteOf(list);

    clsIMLogWriter log;
    std::wstring file = log.update(list.substr(0, list.size() / 2));
    file += log.update(list);
    require(file == list || list.size() / 2 == 0 || file.size() >= list.size());
    return 0;
}
