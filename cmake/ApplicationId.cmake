# The application's id, made from the maker's site, and its path on D-Bus: "stowlark.example" gives STOWLARK_ID
# "example.stowlark.Stowlark" and STOWLARK_OBJECT_PATH "/example/stowlark/Stowlark". The names of D-Bus's interfaces, of
# which the id is one, hold no "-", and no part of them begins with a digit.
string(REPLACE "." ";" labels "${STOWLARK_SITE}")
if(NOT APPLE)
    list(TRANSFORM labels REPLACE "-" "_")
    list(TRANSFORM labels REPLACE "^([0-9])" "_\\1")
endif()
list(REVERSE labels)
list(JOIN labels "." STOWLARK_ID)
string(APPEND STOWLARK_ID ".Stowlark")
string(REPLACE "." "/" STOWLARK_OBJECT_PATH "/${STOWLARK_ID}")
