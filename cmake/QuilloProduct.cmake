# What a release says of itself and where it leads. Whoever makes packages sets these; src/base/Product.h.in says what each
# is for.
set(QUILLO_VERSION "${PROJECT_VERSION}" CACHE STRING "Version, for people; may be empty")
set(QUILLO_BUILD "1" CACHE STRING "Dotted numbers that grow with every release; may be empty")
set(QUILLO_WEBSITE "https://quillo.org" CACHE STRING "Address of the product's page")
set(QUILLO_SUPPORT_ADDRESS "support@quillo.org" CACHE STRING "Where mail to the makers goes")
set(QUILLO_FEEDBACK_PAGE "https://quillo.org/feedback" CACHE STRING "Page where users review the product; https")
set(QUILLO_UPDATE_FEED "" CACHE STRING "Address of the list of releases; https. Empty: no looking for updates")
set(QUILLO_UPDATE_KEY "" CACHE STRING "Ed25519 public key of the releases, 32 bytes in Base64")
set(QUILLO_NEXT_UPDATE_KEY "" CACHE STRING "Ed25519 public key of the releases to come")
