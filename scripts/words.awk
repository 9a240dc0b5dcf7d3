# The words of comments and documents: awk -f words.awk WORDS ALLOWED FILE...
# Of a program the comments count, of a document all but what stands in code.
FNR == 1 { file++; fenced = 0; document = FILENAME ~ /\.md$/; hashes = FILENAME !~ /\.(h|cpp|js|mjs|css|md)$/ }
file == 1 {
  if ($0 ~ /^#/ || $0 == "") next
  split($0, parts, "\t")
  gsub(/W/, "[^a-z]", parts[1])
  pattern[++count] = tolower(parts[1]); advice[count] = parts[2]
  next
}
file == 2 {
  if ($0 ~ /^#/ || $0 == "") next
  split($0, parts, "\t")
  allowed[++exceptions] = parts[1]; piece[exceptions] = parts[2]
  next
}
document && /^ *```/ { fenced = !fenced; next }
document && fenced { next }
{
  text = $0
  if (document) gsub(/`[^`]*`/, " ", text)
  else if (hashes) { if (!match(text, /(^|[ \t])# /)) next; text = substr(text, RSTART) }
  else { if (!match(text, /\/\/|\/\*|^ *\* /)) next; text = substr(text, RSTART) }
  text = tolower(" " text " ")
  for (i = 1; i <= count; i++) {
    if (text !~ pattern[i]) continue
    for (e = 1; e <= exceptions; e++) if (allowed[e] == FILENAME && index($0, piece[e])) break
    if (e <= exceptions) continue
    match(text, pattern[i])
    found = substr(text, RSTART, RLENGTH)
    gsub(/^[^a-z]+|[^a-z]+$/, "", found)
    printf "%s:%d: \"%s\": write %s\n", FILENAME, FNR, found, advice[i]
    break
  }
}
