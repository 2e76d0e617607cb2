// Reports to the host. Every one has the same form; only the message differs.
#include "host/near_text_comparer.h"
#include "host/text_width.h"

wchar_t const NearTextComparer::kErrorMessages[3][2][500] = {
    {L"String length must be no longer 1000 characters",
     L"Длинна строки не должна превышать 1000 символов"},
    {L"Input parameters error", L"Ошибка входных параметров"},
    {L"Internal error. Try to rerun",
     L"Внуттрення ошибка. Попробуйте попробовать запустить компоненты снова"},
};

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
