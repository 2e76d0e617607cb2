#include "near_text/input/converter.h"

#include <unicode/ucnv.h>
#include <unicode/ucnv_err.h>

#include <new>
#include <stdexcept>

namespace near_text {

void CloseConverter::operator()(UConverter* converter) const {
    ucnv_close(converter);
}

Converter openConverter(std::string const& encoding) {
    UErrorCode status = U_ZERO_ERROR;
    // To ICU the empty name is one that depends on the machine.
    Converter converter(encoding.empty() ? nullptr : ucnv_open(encoding.c_str(), &status));
    if (status == U_MEMORY_ALLOCATION_ERROR) throw std::bad_alloc();
    if (converter == nullptr || U_FAILURE(status)) {
        throw std::runtime_error(
            "there is no encoding '" + encoding +
            "'; known ones are utf-8, utf-16, windows-1251, windows-1252, koi8-r, "
            "cp866, iso-8859-1, gb18030, shift_jis and many others");
    }
    ucnv_setToUCallBack(converter.get(), UCNV_TO_U_CALLBACK_STOP, nullptr, nullptr, nullptr,
                        &status);
    ucnv_setFromUCallBack(converter.get(), UCNV_FROM_U_CALLBACK_STOP, nullptr, nullptr, nullptr,
                          &status);
    if (U_FAILURE(status)) throw std::runtime_error(std::string("ICU: ") + u_errorName(status));
    return converter;
}

std::string canonicalName(Converter const& converter) {
    UErrorCode status = U_ZERO_ERROR;
    return ucnv_getName(converter.get(), &status);
}

}  // namespace near_text
