# SPDX-License-Identifier: MIT

# Makes a program of the C++ blocks in the guides: every block is a function of the class that
# guide.h declares, so that the compiler checks each call and says the line of the guide.

/^```cpp/ {
    inside = 1
    ++count
    body = body "\ntemplate<>\nint Guide::block<" count ">(int argc, char **argv)\n{\n"
    body = body "#line " FNR + 1 " \"" FILENAME "\"\n"
    next
}
inside && /^```/ {
    inside = 0
    body = body "}\n"
    next
}
inside && /^#include/ {
    includes = includes $0 "\n"
    body = body "\n"
    next
}
inside {
    sub(/^ *\.\.\.$/, "{}") # what the reader fills in
    body = body $0 "\n"
}
END {
    print includes "#include \"guide.h\"" body
}
