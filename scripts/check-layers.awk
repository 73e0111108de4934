# The rules of check-layers.sh. Reads the names of the sources, one a line, from standard input.

# CoreClasses and ThreadClasses are one floor: their classes need each other, but their headers form no circle.
# Three of them belong to the windows, whose library holds them; no other class of the engine may include these.
# The user interface of the framework stands beside its base: it uses the base, and only windows and programs use it.
function floor_of(path) {
    if (path ~ /^Platform\//) return 1
    if (path ~ /^Framework\/Base\//) return 2
    if (path ~ /^Framework\/UI\//) return 2.5
    if (path ~ /^SupportingClasses\//) return 3
    if (path ~ /^(CoreClasses\/CIOTester|ThreadClasses\/C(Timer|Shutdown)Thread)\.(h|cpp)$/) return 5
    if (path ~ /^(CoreClasses|ThreadClasses)\//) return 4
    if (path ~ /^GUI\//) return 5
    if (path ~ /^Programs\//) return 6
    return 0
}

function may_include(from, to) {
    if (floor_of(to) == 2.5) return floor_of(from) == 2.5 || floor_of(from) >= 5
    return floor_of(to) <= floor_of(from)
}

function may_use_library(from, header) {
    if (header ~ /^Q[A-Z][A-Za-z]*($|\/)/ || header ~ /^Qt[A-Z]/ || header ~ /^q[a-z]+\.h$/)
        return floor_of(from) == 2.5 || floor_of(from) == 6
    if (header ~ /^(CLI|nlohmann)\//)
        return floor_of(from) == 6
    return 1
}

function complain(text) {
    print "check-layers: " text > "/dev/stderr"
    failures++
}

# A violation that stands in the list of exceptions is let pass and marked as needed.
function violation(key, reason) {
    if (key in exception) {
        needed[key] = 1
        return
    }
    complain(key "  (" reason ")")
}

function read_exceptions(    line) {
    while ((getline line < exceptions_file) > 0) {
        sub(/[ \t]*#.*/, "", line)
        if (line != "") exception[line] = 1
    }
    close(exceptions_file)
}

function check_file(path, from,    line, to) {
    while ((getline line < path) > 0) {
        if (line ~ /^[ \t]*#[ \t]*include[ \t]*</) {
            to = line
            sub(/^[^<]*</, "", to)
            sub(/>.*/, "", to)
            if (!may_use_library(from, to)) violation(from " -> " to, "a library that this floor does without")
            continue
        }
        if (line !~ /^[ \t]*#[ \t]*include[ \t]*"/) continue
        to = line
        sub(/^[^"]*"/, "", to)
        sub(/".*/, "", to)
        includes++
        if (!(to in known)) complain(from " -> " to "  (not the path of a header below Source/)")
        else if (!may_include(from, to)) violation(from " -> " to, "runs up a floor")
        if (from ~ /\.h$/) edges[from] = edges[from] to "\n"
    }
    close(path)
}

# Depth first, with the headers on the way here; one that is met again on its own way closes a circle.
function visit(header, way,    targets, count, i) {
    state[header] = "open"
    way = way header "\n"
    count = split(edges[header], targets, "\n")
    for (i = 1; i < count; i++) {
        if (state[targets[i]] == "open") report_circle(substr(way, index(way, "\n" targets[i] "\n") + 1))
        else if (state[targets[i]] == "") visit(targets[i], way)
    }
    state[header] = "done"
}

function report_circle(members) {
    sub(/\n$/, "", members)
    gsub("\n", " ", members)
    violation("circle " members, "headers that include each other")
}

{
    names[++count] = substr($0, length("Source/") + 1)
    known[names[count]] = 1
}

END {
    if (count == 0) complain("no sources found")
    read_exceptions()
    for (i = 1; i <= count; i++) {
        if (floor_of(names[i]) == 0) complain(names[i] "  (stands on no floor)")
        else check_file("Source/" names[i], names[i])
    }
    for (i = 1; i <= count; i++) if (state[names[i]] == "") visit(names[i], "\n")
    for (key in exception) if (!(key in needed)) complain("exception no longer needed: " key)
    if (failures) exit 1
    print "check-layers: " count " files, " includes " includes"
}
