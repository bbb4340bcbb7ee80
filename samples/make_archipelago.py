#!/usr/bin/env python3
"""Writes archipelago.kel: twelve islands, a ferry between them, and a post round.

Usage: make_archipelago.py [FILE]      (default: archipelago.kel beside this script)

The same seed always gives the same bytes, so the game can be rebuilt and compared.
"""

import random
import sys
from pathlib import Path

SEED = 1907
OUTDOOR_LINK_CHANCE = 0.3  # how often two neighbouring fields share a path besides the one that is needed
OBJECT_CHANCE = 0.6

DIRECTIONS = {
    "north": (0, 1), "south": (0, -1), "east": (1, 0), "west": (-1, 0),
    "northeast": (1, 1), "northwest": (-1, 1), "southeast": (1, -1), "southwest": (-1, -1),
}
OPPOSITE = {
    "north": "south", "south": "north", "east": "west", "west": "east",
    "northeast": "southwest", "southwest": "northeast", "northwest": "southeast", "southeast": "northwest",
}

# The words of each island go into the shared sentences, so that no two islands read alike.
ISLANDS = [
    # name, stone, bird, tree, crop, colour, trade, saint, inn sign
    ("Orlé", "granite", "gulls", "ash", "barley", "white", "sailmaking", "Saint-Éloi", "The Twelve Bells"),
    ("Tamsin", "slate", "choughs", "hawthorn", "oats", "blue", "herring", "Sainte-Zoé", "The Drowned Bell"),
    ("Grünholm", "red sandstone", "geese", "birch", "rye", "green", "cheese", "Saint-Jürgen", "The Green Man"),
    ("Brévenne", "limestone", "swallows", "fig", "lentils", "ochre", "honey", "Sainte-Hélène", "The Bee and Anchor"),
    ("Kestrow", "basalt", "kestrels", "rowan", "turnips", "black", "wool", "Saint-Colm", "The Ram"),
    ("Port-Doué", "chalk", "terns", "tamarisk", "beans", "pink", "salt", "Saint-Noël", "The Salt Barrel"),
    ("Skarvøy", "gneiss", "cormorants", "juniper", "kale", "grey", "stockfish", "Saint-Åke", "The Cormorant"),
    ("Little Wether", "flint", "larks", "elder", "clover", "yellow", "mutton", "Saint-Bede", "The Lost Lamb"),
    ("Ambrelle", "marble", "doves", "olive", "saffron", "amber", "perfume", "Sainte-Agnès", "The Amber Room"),
    ("Haldon Mère", "gritstone", "lapwings", "willow", "flax", "brown", "linen", "Saint-Méen", "The Spinning Wheel"),
    ("Norrán", "serpentine", "petrels", "holly", "potatoes", "violet", "copper", "Saint-Piran", "The Count House"),
    ("Fin-du-Jour", "coral rag", "oystercatchers", "pine", "samphire", "scarlet", "lobsters", "Sainte-Luce", "The Last Lamp"),
]
ISLAND_FIELDS = ("island", "stone", "bird", "tree", "crop", "colour", "trade", "saint", "sign")

NAME_WORDS = """Gannet Candle Otter Marram Bishop's Thrift Widow's Lantern Plover Mackerel Honeysuckle Cutler's
Samphire Heron Tinker's Fiddler's Cold Long Upper Nether Hollow Bramble Thistle Smuggler's Abbot's Seven
Kettle Pilot's Barley Quiet Whimbrel Gorse Rope Ladle Copper Sexton's Juniper Moon Weaver's Foxglove
Curlew Pebble Shepherd's Windy Mermaid's Saffron Anvil Linnet Apple Drover's""".split()

# kind: nouns for its names, opening sentences, detail sentences, things that may stand there
OUTDOORS = {
    "landing": (None, [
        "A stone slip, green at the bottom and grey at the top, goes down into water clear enough to count the crabs.",
        "The ferry ties up here at a jetty of {stone} blocks, and everyone who has nothing to do comes to watch it.",
        "Bollards, a crane, a bench: the whole of {island} arrives and leaves by this one small harbour.",
        "Nets are drying along the wall, and the boats below it are all painted the same shade of {colour}.",
        "You step ashore among crates marked {trade} and a crowd of {bird} that think you have come for them.",
        "A short pier with a tin roof keeps the rain off the mail, and off nobody else.",
    ], [
        "A painted board gives the times of the ferry and has been corrected by hand.",
        "Somebody has chalked the price of {trade} on the harbour wall.",
        "The tide gauge has a face drawn on it, surprised at high water.",
        "Rope lies about in coils, every coil with its own cat.",
    ], [
        ("ferry board", "the", "The ferry goes round the islands both ways, all day. Below that, in pencil: |iweather permitting, and Jory being awake|xi."),
        ("crane", "a hand", "It was made to lift a piano, once, and has not been greased since."),
        ("bollard", "an iron", "Worn to a waist by a hundred years of rope."),
    ]),
    "street": (["Street", "Row"], [
        "Houses of {stone} stand shoulder to shoulder up the one real street of {island}, with their backs to the sea.",
        "Every front door here is {colour}, because the paint came off a wreck and there was plenty of it.",
        "The street is just wide enough for one cart and one opinion.",
        "Steps, a handrail, more steps: whoever laid out this street had young legs.",
        "Washing hangs from side to side overhead, so that you walk under other people's Mondays.",
        "Cobbles, gutters and window boxes, all scrubbed; a broom leans in every second doorway.",
    ], [
        "A smell of bread comes up through a grating.",
        "Behind a curtain someone is practising the cornet, four bars at a time.",
        "The lamps are still lit by hand, by a man with a long pole and no hurry.",
        "A wooden leg stands outside the cobbler's, waiting to be called for.",
    ], [
        ("window box", "a", "Thyme, marigolds, and a small flag for the regatta."),
        ("letter box", "a", "Painted {colour}. It is the only thing here that is emptied twice a day, and the reason is you."),
        ("handcart", "a", "The left wheel squeaks in the key of G, by all accounts."),
    ]),
    "square": (["Square", "Green", "Cross"], [
        "All the paths of {island} seem to meet here, under one enormous {tree} with a bench built round it.",
        "The square is paved in {stone} with a ring of darker slabs, where the market stalls stand on Thursdays.",
        "Four old men occupy the four corners of this square, and change places at noon.",
        "A bandstand, a pump, a notice about dogs: this is where {island} makes up its mind.",
        "Pigeons and {bird} divide the square between them along a line that only they can see.",
        "It was laid out for parades; now children play marbles down the middle of it.",
    ], [
        "A stall sells {trade}, and nothing but {trade}.",
        "The clock on the school has been five minutes fast since the war, and so has everybody.",
        "Trestles are stacked against a wall, ready for some feast or other.",
        "A donkey is tied to the railing, reading a poster.",
    ], [
        ("notice board", "a", "Lost: one oar. Found: one oar. The two notices are in the same hand."),
        ("bench", "a", "Carved with initials, some of which have since married each other."),
        ("statue", "a", "A captain in {stone}, pointing out to sea. |iHe meant well|xi, says the plinth."),
    ]),
    "lane": (["Lane", "Way", "Path", "Steps"], [
        "High banks close in on both sides, full of ferns and the small noises of wrens.",
        "The lane goes between walls of loose {stone}, put together without mortar and without a single straight line.",
        "Cart ruts, grass down the middle, and {tree} branches meeting over your head.",
        "A narrow way, all bends; at each one you think that you will see the sea, and at each third one you do.",
        "Hens walk ahead of you down the lane, looking back now and then as if you were being shown round.",
        "Somebody has whitewashed the stones along the edge, so as to find the way home at night.",
    ], [
        "A gate hangs by one hinge and a piece of string.",
        "There are blackberries, in season, and scratches in all seasons.",
        "A milk churn stands on a stone shelf, waiting for tomorrow.",
        "Old ferry tickets have blown up against the bank.",
    ], [
        ("stile", "a", "Three slabs of {stone}, and a hole at the bottom for the dog."),
        ("milestone", "a", "It says 1. It does not say to what."),
        ("milk churn", "a", "Dented, empty and much signed by children."),
    ]),
    "well": (["Well", "Spring", "Fountain"], [
        "Water runs from a lion's mouth into a trough, and the lion has been worn down to something more like a sheep.",
        "Ferns hang in the mouth of this well, and when you lean over it your own face leans up to look.",
        "The spring comes out from under a slab of {stone}, cold enough to hurt.",
        "A roof of old slates on four posts keeps the leaves out of the well of {island}.",
        "Here the women used to wash and the whole news of {island} was wrung out twice a week.",
        "Rags are tied to the {tree} beside the water, one for each wish.",
    ], [
        "A tin cup hangs on a chain.",
        "The path round it is trodden hard and shiny.",
        "They say it has run salt only once, and they do not say why.",
        "Small frogs sit about like dropped coins.",
    ], [
        ("tin cup", "a", "It has been drunk from by everyone you will meet here."),
        ("bucket", "a", "Staved like a barrel, with {colour} hoops."),
    ]),
    "field": (["Field", "Croft", "Acre", "Meadow"], [
        "A field of {crop}, combed all one way by the wind.",
        "Strips of {crop} run down the slope, no wider than a scythe can reach.",
        "Sheep have eaten this field down to a carpet; they look up, chewing, as if you had come about the bill.",
        "The hay is cut and standing in small round stacks, each with a hat of sacking.",
        "Rows and rows of {crop}, and a scarecrow in a ferryman's cap.",
        "Seaweed has been carted up and spread here, so that the land smells of the shore.",
    ], [
        "A flock of {bird} goes up, turns over once and comes down in the same place.",
        "In one corner a plough is rusting very gracefully.",
        "Somebody's dinner is hanging from a branch in a red handkerchief.",
        "The walls are full of the stones that the field was full of before.",
    ], [
        ("scarecrow", "a", "It wears a better coat than yours."),
        ("plough", "a rusty", "The name of the maker is cast into it, along with the word |iPATIENCE|xi."),
        ("haystack", "a", "Warm on the side of the sun; something small is asleep in it."),
    ]),
    "hill": (["Hill", "Tor", "Beacon", "Knoll"], [
        "From up here {island} looks like something left on a blue table: you can see all its edges.",
        "The top of the hill is bald rock, {colour} with lichen, with a cairn on the highest part of it.",
        "Wind, turf, and eleven other islands laid out round you like a hand of cards.",
        "It is not much of a hill, but there is nothing else on {island} to compare it with.",
        "An iron basket on a pole stands ready for a bonfire that has not been wanted for sixty years.",
        "The path gives up just below the summit and leaves the rest to you.",
    ], [
        "The ferry is a white scratch on the water.",
        "Far out, a line of surf shows where the thirteenth island would have been.",
        "You can count the chimneys; there are fewer than there are stories about them.",
        "Hares have worn a small road of their own across the top.",
    ], [
        ("cairn", "a", "You add a stone to it, as everybody does. It does not get any higher."),
        ("beacon", "the", "A crow has built in it, in the belief that the peace will last."),
    ]),
    "cliff": (["Head", "Cliff", "Edge", "Brow"], [
        "The land stops, without notice, at a cliff of {stone} two hundred feet high.",
        "Ledges go down and down below you, each one crowded with {bird} all talking at once.",
        "The turf is thick and springy as far as the edge, and there is nothing springy about the rest.",
        "You lie on your front to look over, since nobody who stands up here for long is asked to do it twice.",
        "A rope fence marks where the path was before the winter.",
        "Waves come in below, think for a moment, and break; the sound takes some time to climb up to you.",
    ], [
        "Thrift grows in every crack.",
        "A seal is looking up at you from the swell, like a bald man in a bath.",
        "Initials and a heart are cut in the rock, a long way further out than anyone should sit.",
        "The air tastes of salt and, faintly, of {trade}.",
    ], [
        ("rope fence", "a", "More of a suggestion than a fence."),
        ("spyglass", "a fixed", "For one copper you may see the next island much larger and a little upside down."),
    ]),
    "beach": (["Strand", "Sands", "Beach", "Bay"], [
        "A half moon of {colour} sand, with one line of footprints going out and none coming back.",
        "Low water has left the beach ribbed like the roof of a mouth.",
        "Driftwood, cork floats, a single glove: the tide has laid out its goods for you to choose from.",
        "Sandpipers run along the edge of each wave as if they had been told not to get wet.",
        "Dunes shelter the place from behind; it is warm here out of the wind, and very quiet.",
        "Shells lie so thick that you walk with a noise like breaking plates.",
    ], [
        "Two upturned boats are being used as a bench.",
        "A child has begun a castle here on a scale that would need permission.",
        "The sea is so flat that it seems to be listening.",
        "Out beyond the surf a fisherman stands up in his boat and waves, possibly to you.",
    ], [
        ("upturned boat", "an", "The |iPoésie|xi. She will float again, says a label, after Easter. It does not say which."),
        ("driftwood", "some", "Bleached, twisted, and shaped so like a horse that somebody has given it a nosebag."),
        ("sandcastle", "a", "Seven towers, a moat, and a crab in residence."),
    ]),
    "cove": (["Cove", "Creek", "Haven", "Gut"], [
        "A crack in the coast, deep and still, just wide enough for a boat that does not want to be seen.",
        "The rocks come round on both sides like arms and hold a small piece of sea, quite calm.",
        "Someone has cut steps down to the water here, and someone else has cut a shorter way up for barrels.",
        "Weed lifts and falls as slowly as breathing.",
        "The cove is in shade by noon; the water is a very dark green and keeps its thoughts to itself.",
        "At the back of the cove is a cave, and at the back of the cave, they say, an end of rope.",
    ], [
        "An iron ring in the rock is still bright on the inside.",
        "You could shout here, and nobody would know it but the {bird}.",
        "A lobster pot bobs up and down at the entrance like a doorman.",
        "There is a smell of tar and old apples.",
    ], [
        ("iron ring", "an", "Not rusty. Whoever uses it does so at night, and often."),
        ("lobster pot", "a", "Empty, except for the sort of fish that wanders into meetings."),
    ]),
    "wood": (["Wood", "Copse", "Spinney"], [
        "The trees are all {tree}, bent over eastward, like a crowd leaving a theatre in the rain.",
        "A small wood, so thick that it has its own weather.",
        "Light comes down through the {tree} leaves in coins.",
        "Moss has grown over everything that kept still, including a gate.",
        "Roots cross the path in ridges, polished by boots.",
    ], [
        "A woodpecker is putting up a shelf.",
        "There are mushrooms, of the kind that you ask about first.",
        "Charcoal was burnt here once, and the ground is still black.",
    ], [
        ("hollow tree", "a", "Room for one, standing. There is a candle-end in it and a very old sweet."),
        ("woodpile", "a", "Stacked by somebody who cannot abide a gap."),
    ]),
    "marsh": (["Marsh", "Fen", "Pans"], [
        "Reeds, mud, and a causeway of planks with the middle ones missing.",
        "Shallow pans of water, each holding its own square of sky.",
        "The ground here has not decided: it shakes when you walk, and closes up behind you.",
        "Creeks wind about through sea lavender, filling from the bottom as you watch.",
        "A heron stands on one leg in the middle of the marsh of {island}, like a thing left behind by surveyors.",
    ], [
        "Something plops, just too late for you to see it.",
        "The mud has kept every footprint of the week, mostly those of {bird}.",
        "It smells of eggs, mint and eternity.",
    ], [
        ("duckboards", "some", "Slimy, but honest."),
        ("punt", "a flat", "Half full of water, with a family of ducks in the other half."),
    ]),
    "orchard": (["Orchard", "Garden"], [
        "Apple trees in rows, whitewashed to the knee.",
        "A walled orchard, with the warmth of the whole day kept in its {stone}.",
        "Hives stand under the trees, each painted a different shade of {colour}.",
        "The grass is long, and full of windfalls and wasps.",
        "Pears have been trained along the wall in the shape of candlesticks.",
    ], [
        "A ladder leans in the branches, going nowhere.",
        "Bees go over your head in both directions, like people with trains to catch.",
        "Somebody has hung up strips of tin against the {bird}.",
    ], [
        ("beehive", "a", "It hums one note, and means it."),
        ("fruit ladder", "a", "Wide at the bottom, narrow at the top, and short of one rung."),
    ]),
    "quarry": (["Quarry", "Delf", "Pit"], [
        "Half the hill has been taken away from here, to build the other islands.",
        "Blocks of {stone} lie about just as they were cut, with numbers on them in {colour} paint.",
        "The quarry has filled with rain, and the rain has turned the colour of a bottle.",
        "Galleries go up the face like the tiers of an opera house.",
        "Rails lead to the edge and, without comment, over it.",
    ], [
        "Each sound here comes back a moment later, improved.",
        "A {tree} has taken root on the highest ledge.",
        "The winch has been oiled lately, though nobody works here.",
    ], [
        ("winch", "a", "Two men to wind it, one to say stop."),
        ("cut block", "a", "It was going to be a lintel, until somebody sneezed."),
    ]),
    "ruin": (["Abbey", "Priory", "Castle", "Mill"], [
        "Four arches stand up out of the nettles with the sky in them.",
        "The roof went in one storm, the bells in another, and the rest went into the sheepfolds of {island}.",
        "Stairs go round and round inside a broken tower and come out on a view.",
        "Walls of {stone} as high as your chest mark out rooms where nobody has been indoors for centuries.",
        "Ivy holds the last gable up, or the gable holds up the ivy.",
    ], [
        "A carved face over the door has lost its nose and kept its smile.",
        "Sheep come here when it rains, and stand about like visitors.",
        "The {bird} have taken over the chimney.",
    ], [
        ("carved face", "a", "Green man, saint or tax collector; opinions differ."),
        ("broken column", "a", "Someone has been using it to sharpen a scythe."),
    ]),
    "moor": (["Moor", "Heath", "Down"], [
        "Heather, gorse, heather, a pool, heather.",
        "The moor rolls away under a great deal of sky; nothing on it is taller than you.",
        "Peat has been cut here in steps and stacked to dry in little black houses.",
        "Standing stones, seven of {stone} and one of something else, lean together like people sharing a match.",
        "Ponies with fringes over their eyes let you come just close enough.",
    ], [
        "A skylark goes up on its own string.",
        "Cloud shadows cross the ground faster than you can walk.",
        "Cotton grass nods in the wet places, to show where not to tread.",
    ], [
        ("standing stone", "a", "If you put your ear to it you can hear the sea, or your ear."),
        ("peat stack", "a", "Dry as biscuit, and built to lean into the wind."),
    ]),
}
ALWAYS_OUTDOORS = ["landing", "street", "square", "lane", "well", "field", "hill", "cliff", "beach", "cove"]
SOMETIMES_OUTDOORS = ["wood", "marsh", "orchard", "quarry", "ruin", "moor"]

INDOORS = {
    "inn": ([
        "Low beams, a long table, and over the fire a stuffed pike with its own chair.",
        "The bar is the side of a ship, and still has a row of portholes in it.",
        "It is dark and warm in here and smells of smoke, wet dog and {trade}.",
        "Every mug on the wall has a name on it, and some of the names are on the war memorial too.",
        "The floor slopes, so that a dropped coin always rolls to the landlord.",
        "A barometer, a dartboard and a painting of {island} in which the sea is too blue.",
    ], [
        "Two dominoes players look up, and down.",
        "There is stew; there has been the same stew, off and on, since Christmas.",
        "A parrot in the corner keeps silent in several languages.",
        "Someone has left a fiddle on the settle, still warm.",
    ], [
        ("barometer", "a", "It points to |iChange|xi and always has."),
        ("fiddle", "a", "Three strings and a great many tunes."),
        ("stuffed pike", "a", "It has the expression of somebody who was about to say something."),
    ]),
    "shop": ([
        "String, lamp glass, tea, candles, boots and {trade}: if it is not here then {island} does not need it.",
        "Drawers go up to the ceiling, each with one of whatever is in it tied to the handle.",
        "A bell jangles over your head, and goes on jangling until you have thought of something to buy.",
        "It is half a shop and half somebody's front room; there is a cradle behind the scales.",
        "Tins are built up in the window into a model of the ferry.",
        "Bolts of {colour} cloth lean against flour sacks, and everything has a little flour on it.",
    ], [
        "A slate lists who owes what, and the slate is large.",
        "The scales are of brass, and so polished that they seem to weigh the light.",
        "Liquorice costs a copper for as much as you can reach.",
        "A cat sleeps on the {crop} seed, and is sold round.",
    ], [
        ("scales", "the", "They have been tested and found kind."),
        ("slate", "a", "Half of {island} is on it. The other half keeps a slate of its own."),
        ("tea chest", "a", "The stencil says that it has seen more of the world than you have."),
    ]),
    "chapel": ([
        "Six pews, a harmonium, and a window in which {saint} is holding a very small ferry.",
        "The chapel was built by fishermen, upside down, as they would a boat: ribs, planks and a keel for a roof.",
        "Whitewash and silence; both have been put on thickly.",
        "Candles burn before a figure of {saint} whose feet have been kissed quite flat.",
        "It is so small that the bell rope hangs down among the hymn books.",
        "The names of lost boats go round the walls in {colour} letters, with room left at the end.",
    ], [
        "Someone has put out saucers for the drips.",
        "The smell is of wax, damp and apples.",
        "A swallow comes in, goes once round and leaves by the same pane.",
        "Hassocks hang from their hooks, each worked with a different fish.",
    ], [
        ("harmonium", "a", "One pedal breathes in, the other out, and in between there are hymns."),
        ("poor box", "the", "It says that it is emptied every night. It was."),
        ("model boat", "a", "Hung up by the crew of a real one, who came home."),
    ]),
    "cottage": ([
        "One room, very clean, with a bed in the wall and a table in the window.",
        "Charts are pasted over the walls instead of paper, and the kettle sits on a trivet off the coast of nowhere.",
        "A loom takes up most of the room; the person who lives here lives round the edge of it.",
        "Books stand two deep on every shelf and in three piles on the stairs.",
        "The dresser is full of blue plates, and each plate has a different mend.",
        "Geraniums, a clock, a dog asleep: somebody is at peace here, or has gone to a good deal of trouble to look it.",
    ], [
        "There is an empty place on the mantelpiece, just the size of a letter.",
        "The fire is in, and something is proving under a cloth.",
        "A telescope is trained on the landing: you have been expected since you got off the ferry.",
        "Two cups have been put out.",
    ], [
        ("mantel clock", "a", "It ticks like someone knitting."),
        ("dog", "an old", "One eye opens, counts you, and closes again."),
        ("blue plate", "a", "A willow, a bridge and two birds who have quarrelled."),
    ]),
}

FIRST_NAMES = """Odile Jory Maël Brigitte Tobias Ione Håkan Perran Lucie Ansel Wenna Étienne Greta Cado Mirabel
Sören Hester Loïc Tamsyn Aurèle Nell Joachim Zélie Piers Ottilie Gwen Bartolomé Inga Denzil Clémence Rasmus
Édith Corin Maren Silvan Agathe Morwen Félix Thea Jago Solène Ulrik Bettina Noé Hedra Casimir Lowenna Yves
Kerensa Anselme Dorothée Ivo Marguerite Nils Rosenwyn Théo Signe Alaric Bérénice Col""".split()
SURNAMES = """Maréchal Trevanion Holm Quill Kervé Bragg Pascoe Lindqvist Garrec Thorne Duvallon Penrose Möller
Tallack Vasseur Rook Hébert Carne Bergström Nancarrow Le-Goff Winter Sauvage Dahl Polglaze Rivière""".split()

SPEECHES = {
    "shopkeeper": [
        "Sold out of everything but what you see. What you see is a great deal, mind.",
        "Post, is it? Put mine in the tea tin. It is all bills, and they like the company.",
        "I could do you a pair of boots. One, at least.",
        "They want to build a bridge, I hear. A bridge! Whom would we wait for then?",
        "Take an apple. No, that one. That one wants eating.",
        "The price of {trade} is a scandal, and I ought to know, I set it.",
        "You have a look of somebody who is about to need string.",
        "My grandmother kept this shop. She is in the third drawer from the top, in a manner of speaking: her spectacles are.",
    ],
    "priest": [
        "Sit down. It costs nothing, and the roof needs somebody to hold it down.",
        "I read the sermon to the sheep on Fridays. If they leave, I shorten it.",
        "The bell is cracked, so we ring it softly, and it thinks that we are being kind.",
        "You walk all day and bring people what they are waiting for. I should like to put you in a window.",
        "Saint, smuggler, saint: it was the same man, depending on the tide.",
        "There were nineteen at the last service, counting the dog. We always count the dog.",
    ],
    "farmer": [
        "The {crop} is late. The {crop} is always late. I shall be late myself.",
        "Mind the ram. He is not wicked, he only wants to be understood.",
        "It will rain at four. I have asked it to.",
        "There is more stone in this field than there is field.",
        "My brother went to sea and I stayed with the {crop}. We each feel sorry for the other at Christmas.",
        "You can cut across. The bull is away visiting.",
    ],
    "fisher": [
        "Nothing yesterday, nothing today. So tomorrow I shall need a bigger boat.",
        "See that flat patch, with no wind on it? Don't ever row across that.",
        "I can tell you where every rock is. I have been introduced to most of them.",
        "You post folk have the best of it: your fish don't jump out again.",
        "If you hear singing, it's my wife. If you hear it twice, it isn't.",
        "The ferry? Jory could steer her asleep. He proves it daily.",
    ],
    "child": [
        "I am not lost. I am going round.",
        "If you give me a stamp I'll show you where the seal lives.",
        "There are nine hundred and four steps on {island}. I counted them twice and got the same the second time.",
        "My sister says there are thirteen islands and one of them hides.",
        "I can hold my breath from here to there. Watch. You weren't watching.",
        "When I grow up I am going to be the ferry.",
    ],
}
LOOKS = {
    "innkeeper": ["Sleeves rolled, cloth over one shoulder, and an ear for every table.",
                  "Built like a barrel, with the same gift for keeping things in.",
                  "Thin, quick and cheerful; the sort of host who has your coat off before you have said good day.",
                  "Leaning on the bar as if the two of them had grown up together."],
    "shopkeeper": ["An apron, a pencil, a pair of steel spectacles, and a good memory for sums.",
                   "Somebody who measures you for rope without seeming to.",
                   "Small, neat, and up a ladder.",
                   "Floury to the elbows and glad of the company."],
    "priest": ["Black coat, green with age, and candle wax on one cuff.",
               "Very old, with very young eyebrows.",
               "A hammer in one hand and a hymn book in the other.",
               "Broad shouldered and soft voiced, with a fisherman's hands."],
    "farmer": ["Hat, braces, and a stalk of something in the corner of the mouth.",
               "Brown as a loaf, and leaning on a fork as others lean on a bar.",
               "Tall, in boots made for somebody else, looking at the sky as if it owed her money."],
    "fisher": ["A blue jersey and a pipe; the pipe is out, and has been since spring.",
               "Mending a net without looking at it, with a wooden needle and great contempt.",
               "Two pale eyes in a face like a well-kept rope."],
    "child": ["About nine, with a bucket, and a plaster on each knee.",
              "A small person in a large hat.",
              "Freckles, one tooth short, and very busy."],
    "addressee": ["A quiet face, turned towards the sea; it turns to your bag, and then, quickly, away again.",
                  "Somebody who has met every ferry for a month, and has stopped admitting it.",
                  "Grey hair, bright eyes, ink on the fingers.",
                  "Young, sunburnt, and trying hard not to look at the letters.",
                  "A big coat, with somebody inside it.",
                  "One hand is in a pocket, on an older letter, folded very small."],
}
THANKS = [
    "You read the name on the envelope, and the whole face changes, as a room does when the shutters are opened.",
    "The letter is turned over, held to the light, smelt, and put away unopened for later.",
    "\"From him,\" and that is all; but you are made to sit down and eat something before you go.",
    "It is opened with a fish knife on the spot and read three times, the last time aloud, to you.",
    "There is a laugh, and then a silence, and then your hand is shaken for rather a long while.",
    "\"Eleven weeks,\" says a voice not quite steady. \"I had begun on what to say when it didn't come.\"",
]
# One to be found on each island; the postmistress of Orlé collects them.
CURIOS = ["glass float", "amber bead", "brass button", "whale tooth", "bone whistle", "silver thimble", "ship's nail",
          "painted tile", "fossil shell", "green feather", "old penny", "cork doll"]
CURIO_LOOKS = [
    "Green glass, with one bubble in it, and in the bubble a very small sky.", "A gnat has been asleep in it for longer than there have been islands.",
    "From the coat of somebody in a hurry.", "Scratched on it, very fine, a three-master under all sail.",
    "You blow it. Somewhere a dog sits down.", "It fits your little finger, and no other.",
    "Square, handmade, and all that is left of the |iEspérance|xi.", "Half a blue rabbit. The other half must be wonderful.",
    "A curl of stone, as neat as a signature.", "You have seen every bird in these islands, and it is from none of them.",
    "So worn that the queen on it could be anybody's aunt.", "It floats face up, for which it seems grateful.",
]
CROSSINGS = [
    "The ferry backs out, coughs, and turns its nose across the sound.",
    "A lively crossing. You hold the mailbag, and somebody's aunt holds you.",
    "The sea is like a tray today, and Jory at the wheel has his eyes shut.",
    "A goat has paid full fare and stands in the bows the whole way, ears back, enjoying it.",
    "You sit on the warm deck over the engine and sort your letters. It does not take as long as it did.",
    "Halfway over, the skipper takes off his cap to a patch of empty water, and so does everyone else.",
]


MANY_WAYS = ["You can go {}.", "Paths lead {}.", "From here the way is {}."]
ONE_WAY = ["There is one way from here, {}.", "The path ends here; it goes back {}."]
DOORS = ["The door of {} stands open.", "Here is {}.", "You could look in at {}.", "A lamp burns over the door of {}."]
STANDING = {  # how one stands there: "You are ..."
    "at": ["landing", "well", "cove", "ruin"],
    "in": ["street", "square", "lane", "field", "wood", "marsh", "orchard", "quarry", *INDOORS, "post office"],
    "on": ["hill", "cliff", "beach", "moor"],
}


class Deck:
    """Deals its cards in shuffled order and uses up all of them before one comes again."""

    def __init__(self, rng, cards):
        self.rng, self.cards, self.hand, self.last = rng, list(cards), [], None

    def deal(self):
        if not self.hand:
            self.hand = self.rng.sample(self.cards, len(self.cards))
            if self.hand[-1] == self.last:
                self.hand.reverse()  # the same sentence never twice running
        self.last = self.hand.pop()
        return self.last


class Room:
    def __init__(self, name, kind, words):
        self.name, self.kind, self.words = name, kind, words
        self.text = ""
        self.exits = {}    # direction or "out": room
        self.places = []   # (text for the place line, script)
        self.doors = []    # the indoor rooms that open off this one
        self.extras = []   # further lines, as they stand
        self.things = []   # blocks of lines


class World:
    def __init__(self, seed):
        self.rng = random.Random(seed)
        self.procedures, self.addressees = [], []
        self.used_names = set()
        self.decks = {}
        self.full_names = self.rng.sample([f"{first} {last}" for first in FIRST_NAMES for last in SURNAMES], 90)
        self.first_names_used = set()

    def deal(self, deck_name, cards):
        if deck_name not in self.decks:
            self.decks[deck_name] = Deck(self.rng, cards)
        return self.decks[deck_name].deal()

    def room_name(self, nouns):
        while True:
            word = self.deal("name words", NAME_WORDS)
            name = f"{word} {self.rng.choice(nouns)}"
            if name not in self.used_names:
                self.used_names.add(name)
                return name

    def person(self):
        """A full name; first names differ as long as there are any left, since players type them."""
        for index, name in enumerate(self.full_names):
            first = name.split()[0]
            if first not in self.first_names_used:
                self.first_names_used.add(first)
                return self.full_names.pop(index)
        return self.full_names.pop()


def in_words(items):
    return items[0] if len(items) == 1 else ", ".join(items[:-1]) + " and " + items[-1]


def plain(name):
    """A room name as it reads inside a sentence."""
    if name.startswith("The "):
        return "the " + name[4:]
    return "the " + name if name.startswith("Chapel") else name


def with_article(noun):
    return ("an " if noun[0] in "aeiou" else "a ") + noun


def block(kind, name, lines):
    return [f"define {kind} <{name}>"] + ["  " + line for line in lines] + ["end define"]


# --- one island ------------------------------------------------------------------------------

def lay_out(world, rooms):
    """Puts the outdoor rooms on a grid, so that going there and back again always agrees."""
    landing, first = rooms[0], rooms[1]
    where = {landing: (0, 0), first: (0, 1)}
    link(landing, "north", first)
    for room in rooms[2:]:
        while True:
            # mostly from the latest rooms, so that the island grows outwards and not into a blot
            base = world.rng.choice(list(where)[1:][-4:])
            direction = world.rng.choice(list(DIRECTIONS))
            spot = step(where[base], direction)
            if spot not in where.values() and spot[1] > 0:  # south of the street there is only sea
                break
        where[room] = spot
        link(base, direction, room)
    by_spot = {spot: room for room, spot in where.items()}
    for room in rooms[1:]:
        for direction in ("north", "east"):
            neighbour = by_spot.get(step(where[room], direction))
            free = neighbour and neighbour is not landing and direction not in room.exits
            if free and world.rng.random() < OUTDOOR_LINK_CHANCE:
                link(room, direction, neighbour)


def step(spot, direction):
    east, north = DIRECTIONS[direction]
    return spot[0] + east, spot[1] + north


def link(room, direction, neighbour):
    room.exits[direction] = neighbour
    neighbour.exits[OPPOSITE[direction]] = room


def open_door(outside, inside):
    inside.exits["out"] = outside
    outside.doors.append(inside)
    outside.places.append((inside.name, ""))


def describe(world, room):
    openings, details, _ = room_fragments(room)
    sentences = [world.deal(room.kind + " opening", openings), world.deal(room.kind + " detail", details)]
    ways = {}
    for direction, neighbour in room.exits.items():
        if direction != "out":
            ways.setdefault(neighbour.name, direction)
    if ways:
        several = len(ways) > 1
        pattern = world.deal("ways" if several else "one way", MANY_WAYS if several else ONE_WAY)
        sentences.append(pattern.format(in_words([f"{way} to {plain(name)}" for name, way in ways.items()])))
    for door in room.doors:
        sentences.append(world.deal("doors", DOORS).format(plain(door.name)))
    if "out" in room.exits:
        sentences.append(f"The door leads out to {plain(room.exits['out'].name)}.")
    room.text = " ".join(sentences).format(**room.words)


def room_fragments(room):
    return OUTDOORS[room.kind][1:] if room.kind in OUTDOORS else INDOORS[room.kind]


def furnish(world, room):
    if world.rng.random() < OBJECT_CHANCE:
        name, prefix, look = world.deal(room.kind + " object", room_fragments(room)[2])
        lines = [f"prefix <{prefix}>", f"look <{look.format(**room.words)}>"]
        if world.rng.random() < 0.4:
            lines.append(f"take msg <You leave the {name} to the people of {room.words['island']}.>")
        room.things.append(block("object", name, lines))


def add_character(world, room, role, speak=None, more=()):
    name = world.person()
    look = world.deal(role + " look", LOOKS[role])
    if speak is None:
        speak = "<" + world.deal(role + " speech", SPEECHES[role]).format(**room.words) + ">"
    lines = [f"look <{look}>", f"speak {speak}", *[line.format(name=name) for line in more]]
    room.things.append(block("character", name, lines))
    return name


def add_curio(room, curio, look):
    """A thing to pick up; taking it needs two commands, hence the braces."""
    room.things.append(block("object", curio, [
        f"prefix <{with_article(curio).split()[0]}>",
        f"look <{look}>",
        "take {",
        f"  give <{curio}>",
        f"  hide <{curio}>",
        f"  msg <You put the {curio} in your pocket, under the letters.>",
        "}",
    ]))


def make_island(world, number):
    words = dict(zip(ISLAND_FIELDS, ISLANDS[number]))
    kinds = ALWAYS_OUTDOORS + world.rng.sample(SOMETIMES_OUTDOORS, 3)
    tail = kinds[4:]
    world.rng.shuffle(tail)
    outdoors = []
    for kind in kinds[:4] + tail:  # the village first, the wilder parts in any order
        name = words["island"] + " Landing" if kind == "landing" else world.room_name(OUTDOORS[kind][0])
        outdoors.append(Room(name, kind, words))
    lay_out(world, outdoors)
    landing, street, square, lane = outdoors[:4]
    wild = outdoors[4:]

    addressee_room = world.rng.choice(wild)
    indoors = [Room(words["sign"], "inn", words),
               Room("Chapel of " + words["saint"], "chapel", words)]
    open_door(street, indoors[0])
    open_door(square, indoors[1])

    shopkeeper_room = Room("", "shop", words)
    shopkeeper = add_character(world, shopkeeper_room, "shopkeeper")
    shopkeeper_room.name = f"{shopkeeper}'s Shop"
    open_door(square, shopkeeper_room)

    addressee = add_addressee(world, addressee_room, words)
    cottage = Room(f"{addressee}'s Cottage", "cottage", words)
    open_door(lane, cottage)
    indoors += [shopkeeper_room, cottage]

    add_innkeeper(world, indoors[0], addressee, addressee_room)
    add_character(world, indoors[1], "priest")
    for room in wild:
        role = {"field": "farmer", "orchard": "farmer", "cove": "fisher", "beach": "child"}.get(room.kind)
        if role and room is not addressee_room:
            add_character(world, room, role)
    add_curio(world.rng.choice([room for room in wild if room is not addressee_room]), CURIOS[number], CURIO_LOOKS[number])

    for room in outdoors + indoors:
        describe(world, room)
        furnish(world, room)
        add_commands(room)
    return outdoors + indoors


def add_addressee(world, room, words):
    """Whoever waits for a letter is out somewhere on the island: the innkeeper knows where."""
    speak = f"if flag <post {words['island']}> then say <Thank you. I mean it.> else say <Is there... no. Good day to you.>"
    name = add_character(world, room, "addressee", speak, ["give <letter to {name}> do <deliver to {name}>"])
    world.addressees.append(name)
    world.procedures.append((f"deliver to {name}", [
        f"' {words['island']}",
        f"lose <letter to {name}>",
        f"flag on <post {words['island']}>",
        f"msg <{world.deal('thanks', THANKS)}>",
        "do <one letter less>",
    ]))
    return name


def add_innkeeper(world, room, addressee, addressee_room):
    island = room.words["island"]
    speak = f"do <ask at {room.name}>"
    add_character(world, room, "innkeeper", speak)
    world.procedures.append((f"ask at {room.name}", [
        f"if flag <post {island}> then say <It is all over {island} already. You have made somebody very happy.>",
        f"else say <{addressee}? Never at home by day. Try {plain(addressee_room.name)}.>",
    ]))


def add_commands(room):
    words = room.words
    if room.kind == "well":
        room.extras.append("command <drink> msg <Cold, sweet and a little rusty. You walk on with a lighter bag.>")
    elif room.kind == "hill":
        room.extras.append(f"command <wave> msg <You wave from the top of {words['island']}. Somebody on the ferry waves back.>")
    elif room.kind == "beach":
        room.extras.append("command <swim> if ask <With the post on your back?> then msg <You get as far as the ankles, and think of the ink.> "
                           "else msg <Quite right.>")
    elif room.kind == "chapel":
        room.extras.append("command <ring bell> if chance <50> then msg <One soft note. Nobody comes, but somewhere a door is opened to hear it better.> "
                           "else msg <The rope comes up, and takes you with it, and puts you down again.>")
    elif room.kind == "cliff":
        room.extras.append("script if not flag <giddy> then do <look over the edge>")


# --- what ties the islands together ----------------------------------------------------------

def add_ferries(world, islands):
    """The ferry goes round the ring of islands in both directions."""
    for number, rooms in enumerate(islands):
        for neighbour in (islands[(number + 1) % len(islands)], islands[number - 1]):
            landing = neighbour[0]
            rooms[0].places.append((f"the ferry to; {landing.name}", f"do <sail to {landing.words['island']}>"))
        landing = rooms[0]
        fine, rough = world.deal("crossings", CROSSINGS), world.deal("crossings", CROSSINGS)
        world.procedures.append((f"sail to {landing.words['island']}", [
            "add <crossings; 1>",
            f"if chance <50> then msg <{fine}>",
            f"else msg <{rough}>",
            f"goto <{landing.name}>",
        ]))


def make_post_office(world, street):
    room = Room("Orlé Post Office", "post office", street.words)
    room.text = ("A counter, a wall of pigeon-holes, one for each house in the twelve islands, and a stove with a kettle on it. "
                 "Along the window sill runs an empty shelf, dusted. The street is outside.")
    open_door(street, room)
    street.text += " Over a blue door hangs the horn of the Orlé Post Office."
    room.extras.append("script if more <delivered; 11> then do <sign off>")
    gives = [f"give <{curio}> do <put {curio} on the shelf>" for curio in CURIOS]
    room.things.append(block("character", "Madame Quéré", [
        "look <The postmistress, upright as a stamp, with a watch pinned to her front and a weakness for curious things.>",
        "speak choose <counter>", "gender <she>", *gives]))
    room.things.append(block("object", "shelf", ["prefix <the>", "look do <look at the shelf>", "take msg <It is screwed to the wall.>"]))
    for curio in CURIOS:
        world.procedures.append((f"put {curio} on the shelf", [
            f"lose <{curio}>", "add <curios; 1>", "gain <finds; 1>",
            f"say <{with_article(curio).capitalize()}! Put it there, in the light. No, a little to the left.>",
        ]))
    return room


COMMON_PROCEDURES = [
    ("one letter less", ["add <delivered; 1>", "gain <post; 1>",
                         "if equal <delivered; 6> then msg <Half the bag. It hangs differently now.>",
                         "if more <delivered; 11> then {", "  msg <That was the last one. You shake out the bag, to be sure: a stamp, some sand.>",
                         "  msg <Now back to Orlé, to sign off at the Post Office.>", "}"]),
    ("look over the edge", ["' once is enough for anybody", "flag on <giddy>", "msg <You look over the edge, and your stomach goes a little further.>"]),
    ("look at the shelf", ["if more <curios; 0> then msg <%curios% of the twelve islands on it so far, each with a label in violet ink.>",
                           "else msg <Twelve labels in violet ink, one for each island, and nothing on any of them. |iFinds|xi, it says above.>"]),
    ("sign off", ["if more <curios; 11> then {", "  text <full shelf>", "} else {", "  text <signed off>", "}", "win"]),
    ("count the bag", ["msg <You have delivered %delivered% of twelve letters, and taken the ferry %crossings% times.>"]),
]

TEXTS = [
    ("intro", """|bThe Archipelago Post|xb

There are twelve islands in the Vénelles, and one ferry, and, since old Col put his feet up, one postman. That is you.

Twelve letters came over from the mainland this morning. Nobody here puts up the name of a house, and nobody who is waiting for a letter can bear to sit at home. |iAsk at the inn,|xi said Col. |iThey always know.|xi

|crWet letters do not count.|cb"""),
    ("win", """|bYou hang the empty bag on its nail.|xb

Madame Quéré writes the date, and twelve strokes, and blots them. Outside the last ferry is going round with its lamps lit, calling at every island in turn, like a person saying good night."""),
    ("lose", """The bag goes to the bottom of the sound, and all its news with it.

|iThe islands will go on waiting; they are used to it.|xi"""),
    ("timetable", """|bVÉNELLE STEAM FERRY|xb

Every hour, each way round:

""" + "|n\n".join(island[0] for island in ISLANDS) + """

|iDogs free. Goats full fare.|xi"""),
    ("signed off", "\"All twelve,\" says Madame Quéré. \"And dry.\" She pours you a cup of tea, which she has not done for anyone since Col.\n\n"
                   "Her eye goes along the shelf in the window. |iThere is always tomorrow|xi, it seems to say."),
    ("full shelf", "\"All twelve,\" says Madame Quéré, and then she looks at the shelf, where there is a find from every island, and takes off her spectacles.\n\n"
                   "\"Col walked that round for forty years,\" she says, \"and never once looked |idown|xi.\""),
]


def game_block(world):
    letters = [f"letter to {name}" for name in world.addressees]
    return block("game", "The Archipelago Post", [
        "kel-version <217>",
        "start <Orlé Post Office>",
        "game author <The Vénelle Writing Circle>",
        "game version <2.0>",
        "game copyright <© The Vénelle Writing Circle>",
        "game info <A long walk with a light ending.|nTake your time: the ferry does.>",
        "default fontname <>",
        "default fontsize <0>",
        "' first the post, then what there is to find",
        f"items <{'; '.join(letters)}>",
        f"items <{'; '.join(CURIOS)}>",
        f"startitems <{', '.join(letters)}>",
        "collectables <post 0r12=0 [! letter*s* delivered]; finds d0r12=0 [! find*s* on the shelf]>",
        "startscript {", "  set <delivered; 0>", "  set <curios; 0>", "  set <crossings; 0>", "}",
        "command <count> do <count the bag>",
        "command <timetable> text <timetable>",
        "command <read #paper#> msg <Read #paper#? Other people's letters? Col would turn in his hammock.>",
        "error <badgo; There is no way through there, only weather or a wall.>",
        "error <badcommand; You think it over, and walk on.>",
        "error <defaultlook; It has been out in the salt air for a long time, and does not mind.>",
    ])


def synonyms_block():
    return block("synonyms", "", ["get; pick up = take", "examine; x = look at", "talk to; ask = speak to", "bag; letters = count"])


def menu_block():
    return block("selection", "counter", [
        "info <Madame Quéré looks at you over her spectacles.>",
        "choice <How is the round done?> say <The ferry goes both ways about. Ask for people at the inn: nobody waits for a letter indoors.>",
        "choice <What is the shelf for?> say <For whatever the sea brings. I have never been further than the slip. Bring me something from each island, if you see it.>",
        "choice <When does the ferry go?> text <timetable>",
        "choice <Good day> msg <\"Good day, and keep them dry.\">",
    ])


def room_block(room):
    lines = [f"indescription <You are {word}>" for word, kinds in STANDING.items() if room.kind in kinds]
    if room.kind in ("inn", "chapel", "shop"):
        lines[:0] = [f"alias <{room.kind}>", "prefix <the>"]
    lines.append(f"look <{room.text}>")
    lines += [f"{direction} <{neighbour.name}>" for direction, neighbour in room.exits.items()]
    lines += [f"place <{text}> {script}".rstrip() for text, script in room.places]
    lines += room.extras
    for thing in room.things:
        lines += [""] + thing
    return block("room", room.name, lines)


def write_world():
    world = World(SEED)
    islands = [make_island(world, number) for number in range(len(ISLANDS))]
    add_ferries(world, islands)
    post_office = make_post_office(world, islands[0][1])

    lines = ["' The Archipelago Post, written by make_archipelago.py: change that, not this.", "", "'ZEM-NIP <1>", ""]
    blocks = [game_block(world), synonyms_block(), room_block(post_office)]
    for rooms in islands:
        blocks.append([f"' --- {rooms[0].words['island']}"])
        blocks += [room_block(room) for room in rooms]
    blocks += [block("procedure", name, body) for name, body in COMMON_PROCEDURES + world.procedures]
    blocks += [["define text <" + name + ">"] + text.split("\n") + ["end define"] for name, text in TEXTS]
    blocks.append(menu_block())
    for one in blocks:
        lines += [line.rstrip() for line in one] + [""]
    return "\r\n".join(lines).replace("define synonyms <>", "define synonyms").encode("cp1252")


if __name__ == "__main__":
    target = Path(sys.argv[1]) if len(sys.argv) > 1 else Path(__file__).with_name("archipelago.kel")
    target.write_bytes(write_world())
