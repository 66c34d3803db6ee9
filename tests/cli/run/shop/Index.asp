the shop
