# shellcheck shell=bash
# Sourced: an X server without a screen, with a window manager on it, for one script.
#
#   StartDisplay WIDTHxHEIGHT LOG   sets DISPLAY; false with a line on stderr when it can't be had
#   StopDisplay                     ends both by their process ids; call it from the EXIT trap
#
# Both children get SIGTERM from the kernel too when the script is killed without its traps.

x_server_pid='' window_manager_pid=''

StartDisplay() {
    local size=$1 log=$2 number=''
    local -a tied=()
    if command -v setpriv >/dev/null && setpriv --pdeathsig TERM true 2>/dev/null; then tied=(setpriv --pdeathsig TERM); fi

    # The server picks a free number and writes it when it is ready for clients, so there is no race for
    # one. The FIFO is opened for both ways: opening never blocks, and the read's time limit counts alone.
    local pipe
    pipe=$(mktemp -u "${log}.XXXXXX")
    mkfifo "$pipe"
    exec {pipe_fd}<>"$pipe"
    rm -f "$pipe"
    "${tied[@]}" Xvfb -displayfd "$pipe_fd" -screen 0 "${size}x24" -nolisten tcp -noreset -s 0 \
        </dev/null >>"$log" 2>&1 &
    x_server_pid=$!
    read -r -t 30 number <&"$pipe_fd" || true
    exec {pipe_fd}>&-
    if [[ -z $number ]]; then
        printf 'display: Xvfb did not start:\n' >&2
        tail -n 5 "$log" >&2
        return 1
    fi
    export DISPLAY=:$number
    unset WAYLAND_DISPLAY XAUTHORITY

    "${tied[@]}" openbox </dev/null >>"$log" 2>&1 &
    window_manager_pid=$!
    local -i turn
    for ((turn = 0; turn < 100; ++turn)); do
        # The property is there from the moment on that windows are managed.
        [[ $(xprop -root _NET_SUPPORTING_WM_CHECK 2>/dev/null) == *'window id'* ]] && return 0
        kill -0 "$window_manager_pid" 2>/dev/null || break
        sleep 0.1
    done
    printf 'display: openbox did not start:\n' >&2
    tail -n 5 "$log" >&2
    return 1
}

StopDisplay() {
    local pid
    for pid in $window_manager_pid $x_server_pid; do
        kill "$pid" 2>/dev/null || true
        wait "$pid" 2>/dev/null || true
    done
    window_manager_pid='' x_server_pid=''
}
