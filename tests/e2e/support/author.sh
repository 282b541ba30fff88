# Sourced: what an author in a hurry does with the program and its windows, and what he then finds. $main is the main
# window, $editor the narration editor, $site_editor the site editor. Needs what program.sh and small-tours.sh need.

moment=3                        # Seconds that the author waits for an answer which need not come.
words='Where the eels are born' # What he writes.
processes=()                    # What a sequence has started.
asked=none                      # The dialog that waits for him.

# Findings

# must TEXT COMMAND...: when the command fails, the text is what was found; the sequence goes on.
must() {
    local text=$1
    shift
    "$@" || echo "$text" >>"$scratch/found"
}

# need TEXT COMMAND...: without it the sequence ends.
need() {
    local text=$1
    shift
    "$@" && return
    echo "$text" >>"$scratch/found"
    exit 1
}

not() {
    ! "$@"
}

# soon COMMAND...: whether it succeeds within a moment, when both answers are right.
soon() {
    local patience=$moment
    wait_until "$@"
}

# The program

# Keys as fast as they come.
hands() {
    xdotool key --clearmodifiers --delay 8 "$@"
}

# start_with TITLE ARGUMENT...: starts the program and closes its splash window; then a window with this title is there.
start_with() {
    local title=$1
    shift
    start "$@" && [ "$(title_of "$window")" = "$title" ]
}

start() {
    start_program "$@" && processes+=("$program_process") && press space && wait_until is_gone "$window" &&
        wait_until another_window_is_in_front "$window"
}

# Other than the notice that pages are being made, which goes by itself.
another_window_is_in_front() {
    local focused title
    focused=$(xdotool getwindowfocus 2>/dev/null) && [ "$focused" != "$1" ] || return 1
    title=$(title_of "$focused")
    [[ $title = Wendmark* ]] && [ "$title" != 'Wendmark - Making Pages' ] && window=$focused
}

title_of() {
    xdotool getwindowname "$1" 2>/dev/null
}

# Whether the window has to be answered; the editors are dialogs for the window manager, too.
is_dialog() {
    xprop -id "$1" _NET_WM_STATE 2>/dev/null | grep -q _MODAL
}

# open_tour TOUR: with the program, which then shows it in its main window.
open_tour() {
    tour=$app/MyTours/$1
    need "the tour $1 cannot be made" make_tour "$1"
    need "the program does not start with the tour" start_with Wendmark "$tour"
    main=$window
    wait_until is_at_rest
}

# go STOP KEY: presses the key of a command; the preview then shows this stop.
go() {
    press "$2" && wait_until preview_is_of "$1" && wait_until is_at_rest
}

preview_is_of() {
    grep -qi "src *= *\"page$1\.htm\"" "$working_copy/tmpframe.htm" 2>/dev/null
}

turn_to() {
    xdotool windowactivate "$1" 2>/dev/null && wait_until has_focus "$1" && window=$1
}

has_focus() {
    [ "$(xdotool getwindowfocus 2>/dev/null)" = "$1" ]
}

# find_window TITLE: one of those to be seen.
find_window() {
    xdotool search --onlyvisible --name "^$1" 2>/dev/null | tail -n 1
}

# A dialog waits for the author.
is_asked() {
    asked=$(xdotool getwindowfocus 2>/dev/null) && [ "$asked" != "$main" ] && is_dialog "$asked"
}

# stay: answers a question with No.
stay() {
    press Escape && wait_until is_gone "$asked"
}

# A save has ended when it has written the launch list, its last file.
before_save() {
    touch "$scratch/before-save"
}

save_has_ended() {
    [ "$working_copy/link.txt" -nt "$scratch/before-save" ]
}

note_if_late() {
    save_has_ended && echo 'The save was over before the last key.' >"$scratch/note"
}

save() {
    before_save && press ctrl+s && wait_until save_has_ended
}

# quit_and_look: $answer then says whether the program has asked or ended.
quit_and_look() {
    hands ctrl+q
    look_at_end
}

look_at_end() {
    need "Quit neither asks nor ends the program" wait_until has_answered
    [ "$answer" = asked ] || need "the program has crashed" wait "$program_process"
}

has_answered() {
    if has_ended "$program_process"; then
        answer=ended
    else
        is_asked && answer=asked
    fi
}

must_quit() {
    press ctrl+q
    look_at_end
    must "Quit asks although everything is saved" [ "$answer" = ended ]
    [ "$answer" = ended ] || { stay && kill "$program_process"; }
}

# come_back: after Quit the author is in the main window again, because Quit asked, or because the next start recovers.
come_back() {
    quit_and_look
    if [ "$answer" = asked ]; then
        need "the question does not go away" stay
        ends_all_the_same || { need "the main window does not come back" turn_to "$main" && return; }
    fi
    recover
    need "Recover brings no main window" wait_for_window Wendmark
    main=$window
    wait_until is_at_rest
}

# What the program says of a folder that is none is no question: it goes on ending.
ends_all_the_same() {
    [ ! -d "$tour" ] && soon has_ended_after_messages
}

has_ended_after_messages() {
    if is_asked; then
        press Escape
    fi
    has_ended "$program_process"
}

recover() {
    need "Quit asked nothing, and the next start offers nothing" start_with 'Wendmark - Recover Tour'
    press Return
}

# must_not_be_lost LINE: the author quits, comes back and saves; the line is then in the script.
must_not_be_lost() {
    come_back
    save_and_quit
    must "\"$1\" is not in the script" in_script "$1"
}

save_and_quit() {
    need "Save does not save" save
    must_quit
}

# Windows beside the main window

write_words() {
    press F4
    need "the narration editor does not come" wait_for_window 'Wendmark - Narration Editor'
    editor=$window
    press alt+x ctrl+a && write "$words"
}

apply_words() {
    press ctrl+Return && wait_until is_gone "$editor" && wait_until has_focus "$main"
    window=$main
}

# choose_tour LETTER: with which the name of its folder begins, in the dialog that is coming.
choose_tour() {
    wait_for_window 'Select Tour-Folder' || return 1
    folder_dialog=$window
    wait_until choose_tour_once "$1"
}

# The dialog reads its folders while it is there already: a letter may come too early.
choose_tour_once() {
    press "$1" Return && wait_until folder_is_judged || return 1
    is_gone "$folder_dialog" && return
    press Return && wait_until has_focus "$folder_dialog"
    return 1
}

folder_is_judged() {
    is_gone "$folder_dialog" || is_in_front 'Wendmark: Defective Tour Folder'
}

is_in_front() {
    [ "$(title_of "$(xdotool getwindowfocus 2>/dev/null)")" = "$1" ]
}

serve_page() {
    pages=$scratch/pages
    mkdir "$pages" && mkfifo "$scratch/commands" && exec {commands}<>"$scratch/commands"
    echo '<!DOCTYPE html><title>Bridge page</title><link rel="icon" href="data:,"><p>Arches' >"$pages/bridge.htm"
    node support/serve-held-page.mjs "$pages" bridge.htm "$scratch/address" <"$scratch/commands" &
    processes+=($!)
    wait_until [ -s "$scratch/address" ] && page=$(<"$scratch/address")bridge.htm
}

open_site_editor() {
    press F2 && wait_until site_editor_shows "$1" && site_editor=$window
}

# site_editor_shows TITLE: and it is in front.
site_editor_shows() {
    local focused
    focused=$(xdotool getwindowfocus 2>/dev/null) && [ "$(title_of "$focused")" = "Wendmark - URL Editor - $1" ] &&
        window=$focused
}

# begin_frame_test KEY: for the second stop, with a bookmarked page that does not come; the author then turns to the main
# window.
begin_frame_test() {
    need "the page is not served" serve_page
    need "there is no second stop" go 1 ctrl+Next
    need "there is no second stop" go 2 ctrl+Next
    need "the site editor does not come" open_site_editor 'A stop without a page'
    press ctrl+l && write "$page" && press Return
    need "the site editor does not show the page" wait_until site_editor_shows 'Bridge page'
    press alt+r
    need "the page is not remembered" wait_until bookmark_is_written
    need "the site editor does not come back" turn_to "$site_editor"
    echo hold >&"$commands" && hands "$1"
    need "no frame test runs" wait_until [ -e "$pages/requested" ]
    need "the main window does not come" turn_to "$main"
}

# The list is written when the author turns to the main window; the button takes a while.
bookmark_is_written() {
    turn_to "$main" && grep -qsF -- "$page" "$working_copy/goodlist.txt" && return
    turn_to "$site_editor"
    return 1
}

let_page_come() {
    echo release >&"$commands"
}

test_has_stored() {
    grep -qF -- "$page" "$working_copy"/page[23].htm 2>/dev/null
}

# do_during_test KEY: presses the key of a command that replaces the tour, and answers its question whenever that comes.
do_during_test() {
    press "$1"
    if soon is_asked; then
        press alt+y
        return
    fi
    let_page_come
    soon is_asked || press "$1" # It was refused while the test ran.
    wait_until is_asked && press alt+y
}

must_have_no_bookmark_of_ours() {
    must "the bookmark is in the working copy of another tour" not grep -qs / "$working_copy/goodlist.txt"
    must "the bookmark is in the folder of another tour" not grep -qs / "$1/goodlist.txt"
}
