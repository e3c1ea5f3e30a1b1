# SPDX-FileCopyrightText: 2026 The FW Update developers
# SPDX-License-Identifier: MIT
#
# Prints the releases in CHANGELOG.md as the children of AppStream's element "releases".

function end_entry() {
    if (entry != "") {
        gsub(/`/, "", entry)
        gsub(/&/, "\\&amp;", entry)
        gsub(/</, "\\&lt;", entry)
        print "          <li>" entry "</li>"
        entry = ""
    }
}

function end_release() {
    end_entry()
    if (release) {
        print "        </ul>\n      </description>\n    </release>"
    }
    release = 0
}

/^## / { end_release() }

/^## [0-9.]+ - / {
    release = 1
    print "    <release version=\"" $2 "\" date=\"" $4 "\">\n      <description>\n        <ul>"
}

!release { next }
/^- / { end_entry(); entry = substr($0, 3) }
/^  / { entry = entry " " substr($0, 3) }
/^(#|$)/ { end_entry() }
END { end_release() }
