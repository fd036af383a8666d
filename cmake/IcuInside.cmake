# Sets QUILLO_ICU_LIBRARIES: ICU as src/unicode links it.
#
# Shared libraries of ICU's size take two fifths of the time of a short command. So programs whose property
# QUILLO_ICU_INSIDE is set carry ICU's code inside, where there are archives of it; its data stays shared. Programs that
# load other users of ICU, as those with Qt do, must not: one would take the other's functions for its own.
find_package(ICU 72 REQUIRED COMPONENTS i18n uc data)
set(QUILLO_ICU_LIBRARIES ICU::i18n ICU::uc)

find_library(QUILLO_ICU_I18N_ARCHIVE libicui18n.a)
find_library(QUILLO_ICU_UC_ARCHIVE libicuuc.a)
if(QUILLO_ICU_I18N_ARCHIVE AND QUILLO_ICU_UC_ARCHIVE)
  string(REGEX MATCH "^[0-9]+" icu_major "${ICU_VERSION}")
  set(icu_data "icudt${icu_major}_dat")
  add_library(quillo_icu_data STATIC "${CMAKE_CURRENT_LIST_DIR}/IcuData.cpp")
  target_compile_definitions(quillo_icu_data PRIVATE
    QUILLO_ICU_DATA_SHARED=__real_${icu_data} QUILLO_ICU_DATA_SEEN=__wrap_${icu_data})
  target_link_libraries(quillo_icu_data PRIVATE quillo_flags)

  add_library(quillo_icu_inside INTERFACE)
  target_link_options(quillo_icu_inside INTERFACE "LINKER:--wrap=${icu_data}")
  target_link_libraries(quillo_icu_inside INTERFACE
    "${QUILLO_ICU_I18N_ARCHIVE}" "${QUILLO_ICU_UC_ARCHIVE}" quillo_icu_data "${QUILLO_ICU_UC_ARCHIVE}" ICU::data
    ${CMAKE_DL_LIBS})

  set(inside "$<BOOL:$<TARGET_PROPERTY:QUILLO_ICU_INSIDE>>")
  set(QUILLO_ICU_LIBRARIES "$<${inside}:quillo_icu_inside>" "$<$<NOT:${inside}>:ICU::i18n>" "$<$<NOT:${inside}>:ICU::uc>")
endif()
