# STOWLARK_ID, the application's id: "stowlark.example" makes it "example.stowlark.Stowlark".
string(REPLACE "." ";" parts "${STOWLARK_SITE}")
list(REVERSE parts)
list(JOIN parts "." STOWLARK_ID)
string(APPEND STOWLARK_ID ".Stowlark")
