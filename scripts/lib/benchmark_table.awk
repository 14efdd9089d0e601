# Turns what Google Benchmark prints into one Markdown table, a line for each task and peer. Its rows are named
# task/ours, task/limit and task/peer_<name>, perhaps with /<size> behind.
#
#   awk -f benchmark_table.awk aims log...
#
# Aims stand in brackets; a ratio that misses its aim is bold. CSV files have no room for the counters of single rows, so
# the plain text is read.

BEGIN { inNanoseconds["ns"] = 1; inNanoseconds["us"] = 1e3; inNanoseconds["ms"] = 1e6; inNanoseconds["s"] = 1e9 }

FNR == NR {
    if (NF == 3 && $1 !~ /^#/) {
        aimTask[++aims] = $1
        aimWho[aims] = $2
        aimRatio[aims] = $3
    }
    next
}

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

function ratio(task, ours, who, theirs,    a, text) {
    if (theirs == "") return "‒"
    text = sprintf("%.2f", ours / theirs)
    for (a = 1; a <= aims; ++a) {
        if (who == aimWho[a] && task ~ aimTask[a]) {
            return (text + 0 > aimRatio[a] + 0 ? "**" text "**" : text) " (" aimRatio[a] ")"
        }
    }
    return text
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
            printf "| %s | %s | %s | %s | %s | %s | %s |\n", task, shown(ours), shown(limit), \
                ratio(task, ours, "limit", limit), count ? peer[p] : "‒", shown(theirs), \
                ratio(task, ours, peer[p], theirs) | "LC_ALL=C sort"
        }
    }
}
