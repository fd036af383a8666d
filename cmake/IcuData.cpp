// ICU's code inside the program, its data shared.
//
// ICU's archives look for their data, 30 MB, in a symbol that both an archive and a shared library define.
// Linked with the shared one, as data of this kind is reached without the indirection that shared libraries
// need, the program would copy all of it at each start. So the linker is told (--wrap, see CMakeLists.txt) to
// let the archives see an empty package, and ICU is told where the data is before anybody uses it.
//
// Source of the package's form: the comments of udata.h and ucmndata.h in ICU's documentation of its data
// formats.
#include <unicode/udata.h>

#include <array>
#include <cstdint>
#include <cstdio>

extern "C" {

extern const char QUILLO_ICU_DATA_SHARED[];

/// A package's header and, behind it, the number of its items.
struct EmptyPackage {
    std::uint16_t headerSize = 32;
    std::array<std::uint8_t, 2> magic{0xDA, 0x27};
    std::uint16_t informationSize = 20;
    std::uint16_t reserved = 0;
    std::uint8_t isBigEndian = U_IS_BIG_ENDIAN;
    std::uint8_t charsetFamily = U_CHARSET_FAMILY;
    std::uint8_t codeUnitSize = sizeof(char16_t);
    std::uint8_t reservedByte = 0;
    std::array<std::uint8_t, 4> format{'T', 'o', 'C', 'P'};
    std::array<std::uint8_t, 4> formatVersion{1, 0, 0, 0};
    std::array<std::uint8_t, 4> dataVersion{};
    std::array<std::uint8_t, 8> padding{};
    std::uint32_t itemCount = 0;
};

extern const EmptyPackage QUILLO_ICU_DATA_SEEN;
const EmptyPackage QUILLO_ICU_DATA_SEEN{};

} // extern "C"

static_assert(sizeof(EmptyPackage) == 36);

namespace {

/// Before main(): no static object may use ICU.
const bool found = [] {
    UErrorCode status = U_ZERO_ERROR;
    udata_setCommonData(static_cast<const char*>(QUILLO_ICU_DATA_SHARED), &status);
    if (U_FAILURE(status))
        std::fprintf(stderr, "quillo: ICU does not take its data: %s\n", u_errorName(status));
    return U_SUCCESS(status);
}();

} // namespace
