# STOWLARK_ID, the application's id, and STOWLARK_OBJECT_PATH, where it is on the bus: the labels of the maker's site
# from its end, then the name. stowlark.example gives example.stowlark.Stowlark and /example/stowlark/Stowlark.
string(REPLACE "." ";" labels "${STOWLARK_SITE}")
list(REVERSE labels)
set(STOWLARK_ID "")
foreach(label IN LISTS labels)
    string(REPLACE "-" "_" label "${label}")
    string(REGEX REPLACE "^([0-9])" "_\\1" label "${label}")
    string(APPEND STOWLARK_ID "${label}.")
endforeach()
string(APPEND STOWLARK_ID "Stowlark")
string(REPLACE "." "/" STOWLARK_OBJECT_PATH "/${STOWLARK_ID}")
