# W7 for mawk: the dates of the benchmark data to year-month-day, by hand, and the amounts with two digits.
BEGIN {
  FS = OFS = "\t"
  count = split("jan feb mar apr may jun jul aug sep oct nov dec", names, " ")
  for (i = 1; i <= count; ++i) month[names[i]] = i
}

function date(year, monthNumber, day) {
  if (length(year) == 2) year += year < 50 ? 2000 : 1900
  return sprintf("%04d-%02d-%02d", year, monthNumber, day)
}

function reformatted(text, part) {
  if (text ~ /^[0-9]+\/[0-9]+\/[0-9]+$/) { split(text, part, "/"); return date(part[3], part[1], part[2]) }
  if (text ~ /^[0-9][0-9][0-9][0-9]-[0-9]+-[0-9]+$/) { split(text, part, "-"); return date(part[1], part[2], part[3]) }
  if (text ~ /^[0-9]+-[A-Z][a-z]+-[0-9]+$/) {
    split(text, part, "-")
    return date(part[3], month[tolower(part[2])], part[1])
  }
  if (text ~ /^[A-Z][a-z]+ [0-9]+, [0-9]+$/) {
    split(text, part, /,? /)
    return date(part[3], month[tolower(substr(part[1], 1, 3))], part[2])
  }
  return ""
}

{
  if ($9 != "") $9 = reformatted($9)
  $11 = sprintf("%.2f", $11)
  print
}
