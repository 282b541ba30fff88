# Sourced: two small tours, and what is on the disk of them. Needs $app, $working_copy and $scratch, and $companion, the
# built one; $tour is the folder of the tour that a sequence is about.

# write_stop TITLE ADDRESS NARRATION
write_stop() {
    printf '<<<VoskInfo>>> Stop\n%s\n%s\n\n%s\n\nGo on.\n\n' "$1" "$2" "$3"
}

write_rivers() {
    printf '<<<VoskInfo>>>#%s\n' 'BufferDelay = 40' 'LaunchURL = http://127.0.0.1/start.htm' 'NarHeight = 150' \
        'AdvWidth = 120' 'NavWidth = 97' 'Author = Ann Lee'
    printf '\nRivers of Europe\n\n'
    write_stop Spring spring.htm 'Here the river begins.'
    write_stop Bridge newpage.htm 'Built of stone.'
    write_stop Mouth newpage.htm 'Here it ends.'
}

write_castles() {
    printf '<<<VoskInfo>>>#Author = Bob Roe\n\nCastles\n\n'
    write_stop Gate newpage.htm 'The drawbridge.'
    write_stop Tower newpage.htm 'The flag.'
}

# Of pages at $origin.
write_bridges() {
    printf '<<<VoskInfo>>>#Author = Cy Poe\n\nBridges\n\n'
    write_stop Stone "$origin/old-1" 'Of the Romans.'
    write_stop Iron "$origin/old-2" 'Of the railway.'
    write_stop Rope "$origin/silent" 'Of nobody.'
}

# make_tour NAME: published, so that it has all pages, with a logo of the author's own; a copy is kept to compare with.
make_tour() {
    local folder=$app/MyTours/$1
    mkdir -p "$folder" "$scratch/as-made" && "write_$1" | sed 's/$/\r/' >"$folder/script.txt" &&
        cp "$app/Template/grbullet.gif" "$folder/fr-logo.gif" &&
        echo '<!DOCTYPE html><title>Spring page</title><p>Water' >"$folder/spring.htm" &&
        "$companion" publish "$folder" --template "$app/Template" >>"$scratch/output.log" 2>&1 &&
        cp -r "$folder" "$scratch/as-made"
}

# What differs in a tour's folder from when it was made, but for files that tell of the work rather than of the tour.
changes_in() {
    diff -rq -x link.txt -x tmpframe.htm -x brhist.txt -x ft.htm "$scratch/as-made/$1" "$app/MyTours/$1" |
        sed -E 's/^Files .*\/(.*) and .* differ$/\1 is another/' |
        sed -E 's/^Only in .*as-made.*: /missing: /; s/^Only in .*: /new: /' |
        paste -sd,
}

must_be_as_made() {
    local changes
    changes=$(changes_in "$1")
    must "the folder of $1 has changed: $changes" [ -z "$changes" ]
}

in_script() {
    [ -f "$tour/script.txt" ] && tr -d '\r' <"$tour/script.txt" | grep -qx -- "$1"
}

in_contents() {
    grep -q -- "$1" "$working_copy/toc.htm" 2>/dev/null
}

in_pages() {
    grep -q -- "$1" "$working_copy"/page*.htm 2>/dev/null
}

copy_holds() {
    cmp -s <(titles_in "$scratch/as-made/$1") <(titles_in "$working_copy" 2>/dev/null)
}

# address_of STOP: as the tour's script has it.
address_of() {
    tr -d '\r' <"$tour/script.txt" | grep -A 1 -x -- "$1" | tail -n 1
}
