# Sourced: one line for each step, and the sum at the end.

passed=0
failed=0

# check TEXT COMMAND...: a step that the following ones do not need.
check() {
    local text=$1
    shift
    if "$@"; then
        passed=$((passed + 1))
        echo "ok      $text"
    else
        failed=$((failed + 1))
        echo "FAILED  $text"
    fi
}

# step TEXT COMMAND...: a step without which nothing further makes sense.
step() {
    local failed_before=$failed
    check "$@"
    [ "$failed" -eq "$failed_before" ] || exit 1
}

print_sum() {
    echo "$passed passed, $failed failed"
}
