"""Labels for seed packets, a PostScript file of two pages."""

SEEDS = [
    ("Broad bean", "Early Bird", "Sow in March, 5 cm deep"),
    ("Tomato", "Old Brick", "Under glass, from March"),
    ("Lettuce", "Snail's Regret", "April to August, in light"),
    ("Courgette", "Long Enough", "After the last frost"),
    ("Leek", "Winter Flag", "February, plant out in June"),
    ("Sunflower", "Gatekeeper", "April, along the fence"),
    ("Pea", "Quick Step", "March, with twigs to climb"),
    ("Kale", "Iron Lady", "May; the frost sweetens it"),
    ("Radish", "Eighteen Days", "Any time, really"),
    ("Marigold", "Night Watch", "Between the tomatoes"),
]

PROLOGUE = r"""%!PS-Adobe-3.0
%%Title: Seed labels
%%Creator: Thistlemere Garden Association
%%LanguageLevel: 3
%%Pages: 2
%%BoundingBox: 0 0 595 842
%%DocumentNeededResources: font Helvetica Helvetica-Bold Times-Italic
%%EndComments
%%BeginProlog
/pdfmark where { pop } { userdict /pdfmark /cleartomark load put } ifelse
/green { 0.25 0.42 0.23 setrgbcolor } bind def
/grey { 0.36 0.40 0.35 setrgbcolor } bind def
% x y w h r box: the path of a rectangle with round corners.
/box {
  5 dict begin /r exch def /h exch def /w exch def /y exch def /x exch def
  newpath x r add y moveto
  x w add y x w add y h add r arct
  x w add y h add x y h add r arct
  x y h add x y r arct
  x y x w add y r arct closepath end
} bind def
% A leaf of the size of 1, upright, with its stem at the origin.
/leaf {
  gsave newpath 0 0 moveto -0.5 0.25 -0.4 0.75 0 1 curveto 0.4 0.75 0.5 0.25 0 0 curveto
  clip << /ShadingType 2 /ColorSpace /DeviceRGB /Coords [-0.4 0 0.4 0] /Extend [true true]
    /Function << /FunctionType 2 /Domain [0 1] /N 1 /C0 [0.45 0.68 0.29] /C1 [0.20 0.45 0.24] >>
  >> shfill
  0.03 setlinewidth 0.8 0.9 0.66 setrgbcolor newpath 0 0 moveto 0 0.95 lineto stroke
  0.015 setlinewidth
  0.15 0.15 0.75 { dup newpath 0 exch moveto dup -0.3 exch 0.22 add lineto
    dup 0 exch moveto 0.3 exch 0.22 add lineto stroke } for
  grestore
} bind def
/words { /Helvetica findfont exch scalefont setfont moveto show } bind def
/strong { /Helvetica-Bold findfont exch scalefont setfont moveto show } bind def
/slanted { /Times-Italic findfont exch scalefont setfont moveto show } bind def
% (plant) (variety) (advice) x y label
/label {
  gsave translate 0.97 0.98 0.95 setrgbcolor 0 0 246 132 12 box fill
  green 1 setlinewidth 0 0 246 132 12 box stroke
  gsave 0 0 246 132 12 box clip 0 0 246 26 rectfill grestore
  1 setgray (Thistlemere Garden Association) 14 9 9 words
  grey 14 44 11 words
  exch 0.16 0.23 0.15 setrgbcolor 14 70 17 slanted
  green 14 96 22 strong
  gsave 208 52 translate 12 rotate 62 66 scale leaf grestore
  grestore
} bind def
%%EndProlog
%%BeginSetup
[ /Title (Seed labels) /Author (Thistlemere Garden Association) /DOCINFO pdfmark
<< /PageSize [595 842] >> setpagedevice
%%EndSetup
"""

PAGE_TWO = r"""%%Page: 2 2
[ /Title (How to fill the packets) /Page 2 /View [/XYZ 60 800 null] /OUT pdfmark
green (How to fill the packets) 60 760 26 strong
0.16 0.23 0.15 setrgbcolor
(1. Only dry seed. When it rustles it is dry.) 60 715 13 words
(2. Twenty beans, thirty peas, a pinch of everything else.) 60 690 13 words
(3. The label goes over the flap and closes it.) 60 665 13 words
(4. Write the year on the back.) 60 640 13 words
0.11 0.37 0.55 setrgbcolor
(Everything about saving seed: example.org/thistlemere) 60 600 13 words
[ /Rect [58 594 400 614] /Border [0 0 0]
  /Action << /Subtype /URI /URI (https://example.org/thistlemere/seed-saving) >>
  /Subtype /Link /ANN pdfmark
(Back to the labels) 60 575 13 words
[ /Rect [58 569 180 588] /Border [0 0 0] /Page 1 /View [/Fit] /Subtype /Link /ANN pdfmark
0 1 8 { gsave dup 54 mul 70 add 60 translate dup 37 mul 40 mod 20 sub rotate
  dup 3 mod 20 mul 70 add dup scale leaf grestore pop } for
showpage
"""


def document():
    lines = [PROLOGUE, "%%Page: 1 1\n",
             "[ /Title (Labels) /Page 1 /View [/Fit] /OUT pdfmark\n",
             "green (Seed labels) 42 790 22 strong grey (Cut along the lines.) 440 792 11 words\n"]
    for number, (plant, variety, advice) in enumerate(SEEDS):
        x, y = 42 + number % 2 * 264, 634 - number // 2 * 146
        lines.append(f"({plant}) ({variety}) ({advice}) {x} {y} label\n")
    lines += ["showpage\n", PAGE_TWO, "%%Trailer\n%%EOF\n"]
    return "".join(lines).encode("ascii")
