set(TZ_FLOORS
    ground # the lower one
    top)
