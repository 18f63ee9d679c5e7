#!/bin/sh
# Plays a version server that misbehaves, in the way that the last argument (the data folder's name) asks for. It keeps
# what it read and counts its starts in that folder.
data="$3"
mkdir -p "$data"
echo start >> "$data/starts"
read -r line
printf '%s\n' "$line" > "$data/handshake"
case "$(basename "$data")" in
good) echo '{"listening":"http://127.0.0.1:4711"}'; cat > /dev/null; echo end > "$data/ended" ;;
dies) exit 3 ;;
dies-once)
    [ "$(wc -l < "$data/starts")" -eq 1 ] && exit 3
    echo '{"listening":"http://127.0.0.1:4711"}'; cat > /dev/null ;;
foreign) echo '{"listening":"http://rpa.example.com:80"}'; cat > /dev/null ;;
nonsense) echo 'hello'; cat > /dev/null ;;
chatty)
    echo '{"listening":"http://127.0.0.1:4711"}'
    i=0; while [ $i -lt 2000 ]; do echo "line $i"; i=$((i + 1)); done
    echo done > "$data/chatted"; cat > /dev/null ;;
stubborn) echo '{"listening":"http://127.0.0.1:4711"}'; trap '' TERM; exec 0<&-; while :; do sleep 1; done ;;
esac
