// Reports to the host. Every one has the same form; only the message differs, and its language.
#include <cwchar>

#include "host/near_text_comparer.h"
#include "host/text_width.h"

using namespace comparer;

namespace {

// The names under which the host asks for Russian messages.
constexpr wchar_t const* kLocaleNames[] = {L"ru",  L"ru_ru",   L"ru_RU",
                                           L"rus", L"rus_rus", L"rus_RUS"};

}  // namespace

wchar_t const NearTextComparer::kErrorMessages[3][2][500] = {
    {L"String length must be no longer 1000 characters",
     L"Длинна строки не должна превышать 1000 символов"},
    {L"Input parameters error", L"Ошибка входных параметров"},
    {L"Internal error. Try to rerun",
     L"Внуттрення ошибка. Попробуйте попробовать запустить компоненты снова"},
};

void NearTextComparer::setRussianLocaleFlag(unsigned short const* locale) {
    auto const name = widen(locale);
    for (wchar_t const* russian : kLocaleNames) {
        if (std::wcscmp(name.get(), russian) == 0) russianLocale_ = true;
    }
}

wchar_t const* NearTextComparer::getErrorDescr(Error error) const {
    return kErrorMessages[error][russianLocale_ ? 1 : 0];
}

void NearTextComparer::addError(unsigned int code, wchar_t const* source,
                                wchar_t const* description, long scode) {
    if (connection_ == nullptr) return;
    auto const narrowSource = narrow(source);
    auto const narrowDescription = narrow(description);
    connection_->reportError(static_cast<unsigned short>(code), narrowSource.get(),
                             narrowDescription.get(), scode);
}

void NearTextComparer::reportFailure(Error error) {
    constexpr unsigned int kReportCode = 1006;
    addError(kReportCode, kExtensionName, getErrorDescr(error), kReportCode);
}
