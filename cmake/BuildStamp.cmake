# cmake -DTO=FILE -P BuildStamp.cmake: writes a source file with the stamp of a build that is made now, or at
# SOURCE_DATE_EPOCH where that is set.
string(TIMESTAMP stamp "%b %d %Y @ %H:%M:%S" UTC)
file(WRITE ${TO} "extern const char kBuildStamp[];\nconst char kBuildStamp[] = \"(REL) ${stamp}\";\n")
