# Turns what Google Benchmark prints, with rows named task/ours, task/limit and task/peer_<name> and perhaps /<size> behind
# it, into one Markdown table: a line for each task and peer. Its CSV files have no room for counters of single rows.

BEGIN { inNanoseconds["ns"] = 1; inNanoseconds["us"] = 1e3; inNanoseconds["ms"] = 1e6; inNanoseconds["s"] = 1e9 }

# Name, real time and its unit, processor time and its unit.
$1 ~ /_median$/ {
    name = substr($1, 1, length($1) - length("_median"))
    sub(/\/iterations:[0-9]+/, "", name)
    parts = split(name, part, "/")
    task = part[1]
    who = part[2]
    for (i = 3; i <= parts; ++i) {
        task = task " " part[i]
    }
    if (FILENAME ~ /Tables/) {
        task = task " without instructions"
        sub(/^ours_tables$/, "ours", who)
    }
    if (!(task in seen)) {
        seen[task] = 1
        tasks[++taskCount] = task
    }
    time[task, who] = $4 * inNanoseconds[$5]
    if (sub(/^peer_/, "", who)) {
        peers[task] = peers[task] (peers[task] == "" ? "" : " ") who
    }
}

function shown(nanoseconds) {
    if (nanoseconds == "") return "‒"
    if (nanoseconds < 999.5) return sprintf("%.3g ns", nanoseconds)
    if (nanoseconds < 999.5e3) return sprintf("%.3g µs", nanoseconds / 1e3)
    return sprintf(nanoseconds < 999.5e6 ? "%.3g ms" : "%.0f ms", nanoseconds / 1e6)
}

function ratio(a, b) {
    return a == "" || b == "" ? "‒" : sprintf("%.2f", a / b)
}

END {
    print "| task | ours | limit | ours / limit | peer | theirs | ours / theirs |"
    print "|---|---:|---:|---:|---|---:|---:|"
    fflush()
    for (t = 1; t <= taskCount; ++t) {
        task = tasks[t]
        ours = time[task, "ours"]
        if (ours == "") continue
        limit = time[task, "limit"]
        count = split(peers[task], peer, " ")
        for (p = 1; p <= (count ? count : 1); ++p) {
            theirs = count ? time[task, "peer_" peer[p]] : ""
            printf "| %s | %s | %s | %s | %s | %s | %s |\n", task, shown(ours), shown(limit), ratio(ours, limit), \
                count ? peer[p] : "‒", shown(theirs), ratio(ours, theirs) | "LC_ALL=C sort"
        }
    }
}
