# What the newest section of the change log tells: "## VERSION, YYYY-MM-DD" or, before a release, "## Unreleased", and
# a list. Sets RELEASE_TYPE, RELEASE_DATE and RELEASE_CHANGES, the items as XML.

file(READ ${PROJECT_SOURCE_DIR}/CHANGELOG.md changes)
string(FIND "${changes}" "\n## " begin)
string(SUBSTRING "${changes}" ${begin} -1 changes)
string(REGEX REPLACE "^\n## ([^\n]+)\n+" "" changes "${changes}")
set(heading "${CMAKE_MATCH_1}")
string(FIND "${changes}" "\n## " end)
string(SUBSTRING "${changes}" 0 ${end} changes)

string(TIMESTAMP RELEASE_DATE "%Y-%m-%d" UTC)
set(RELEASE_TYPE development)
if(heading MATCHES "[0-9-]+$")
    set(RELEASE_DATE ${CMAKE_MATCH_0})
    set(RELEASE_TYPE stable)
endif()

string(STRIP "${changes}" changes)
string(REPLACE "&" "&amp;" changes "${changes}")
string(REPLACE "<" "&lt;" changes "${changes}")
string(REPLACE "`" "" changes "${changes}")
string(REGEX REPLACE "\n +" " " changes "${changes}")
string(REGEX REPLACE "- ([^\n]+)\n?" "          <li>\\1</li>\n" RELEASE_CHANGES "${changes}")
