# SPDX-License-Identifier: MIT
# Sourced by run.sh: keeps the templates of the example simulator, which lie in the build folder, those of this version.
# The component would ask whether newer ones may take the place of a user's, and nobody is there to answer.

# bring_templates_up_to_date SHIPPED OWN: makes OWN a copy of SHIPPED, unless a person has changed it: then it stays, and
# a line says so. What was made here is told by its checksum, in the file OWN.made, which is written first: a copy that was
# stopped half-way must not look like somebody's work.
bring_templates_up_to_date() {
    local shipped=$1 own=$2 made=$2.made sum
    if [ ! -f "$shipped" ]; then
        echo "There are no templates to copy: $shipped is missing." >&2
        return 1
    fi
    mkdir -p "$(dirname "$own")"
    if [ -f "$own" ] && ! cmp -s "$shipped" "$own"; then
        sum=$(sha256sum <"$own")
        if ! grep -qxF -- "$sum" "$made" 2>/dev/null; then
            echo "Kept, since it was changed here: $own (delete it to get the templates of this version)" >&2
            if [ "$own" -ot "$shipped" ]; then touch -r "$shipped" "$own"; fi  # an older one would be asked about
            return 0
        fi
    fi
    sum=$(sha256sum <"$shipped")
    if ! grep -qxF -- "$sum" "$made" 2>/dev/null; then echo "$sum" >>"$made"; fi
    cp -p "$shipped" "$own.new"  # with its time, so that neither is the newer one
    mv -f "$own.new" "$own"
}
