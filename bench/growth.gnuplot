# Draws docs/growth.svg from the table that bench/run writes. Columns: events, own cost per record,
# filter pass, drain tick, bytes per record.
set terminal svg size 900,620 font "sans,13" background "white"
set output output
set logscale x
set format x "10^{%L}"
set grid
set key top left
set multiplot layout 2,2
set xlabel "events"
set title "own cost of loading, us a record"
set yrange [0:]
plot table using 1:2 with linespoints pt 7 lw 2 notitle
set title "private memory, bytes a record"
plot table using 1:5 with linespoints pt 7 lw 2 notitle
unset logscale x
set format x "%g"
set xlabel "million events"
set title "one filter pass, ms"
plot table using ($1/1e6):3 with linespoints pt 7 lw 2 notitle
set title "draining all records in one tick, ms"
plot table using ($1/1e6):4 with linespoints pt 7 lw 2 notitle
unset multiplot
