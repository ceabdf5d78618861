# A compressed file that ends early: what was inflated before is listed.
signature CWS
doaction { Play }
doaction { Push "a string" }
end
cut 4
